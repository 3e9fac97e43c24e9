// The day's figures as text for people, as JSON, and as CSV for a spreadsheet.
#pragma once

#include <optional>
#include <string>

#include "base/files/json_fwd.h"
#include "tools/today/day_figures.h"
#include "tools/today/printer_day.h"

namespace zentaro::tools {

struct Range {
  std::string from, to;             // days, both included
  till::Moment begin = 0, end = 0;  // of the local clock
};

std::string dayText(const Range& range, const DayFigures& figures, const std::optional<PrinterDay>& printer);
Json dayJson(const Range& range, const DayFigures& figures, const std::optional<PrinterDay>& printer);
/// A line a kind of document.
std::string dayCsv(const Range& range, const DayFigures& figures);

}  // namespace zentaro::tools
