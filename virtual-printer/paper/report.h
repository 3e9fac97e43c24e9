// What stands on the paper of closings and memory reports.
#pragma once

#include <span>

#include "virtual-printer/paper/ticket.h"

namespace virtual_printer {

/// The totals of a day. An X report shows the day as it stands, a Z report as it was closed.
Lines dayReportLines(const Owner& owner, const std::string& title, const ZRecord& day);

enum class MemoryDetail { EveryClosing, TotalsOnly };

Lines memoryReportLines(const Owner& owner, const std::string& range, std::span<const ZRecord> records,
                        MemoryDetail detail);

}  // namespace virtual_printer
