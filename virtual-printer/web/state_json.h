// What the printer knows, as JSON for the page. Amounts are written as on paper.
#pragma once

#include <string>

#include "virtual-printer/device/works.h"

namespace virtual_printer {

std::string stateJson(const Works& works);

/// What never changes while the printer runs: the owner, and the tables of effects and commands that fault
/// plans are made of.
std::string aboutJson(const Identity& identity);

}  // namespace virtual_printer
