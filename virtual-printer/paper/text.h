// Sheets as plain text, 40 columns wide.
#pragma once

#include <deque>

#include "virtual-printer/paper/sheet.h"

namespace virtual_printer {

std::string textLine(const Line& line);
std::string textPaper(const std::deque<Sheet>& sheets);

}  // namespace virtual_printer
