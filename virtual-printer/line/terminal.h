// The line as a device that a host opens like a serial port.
#pragma once

#include <filesystem>
#include <memory>

#include "virtual-printer/line/host_line.h"

namespace virtual_printer {

/// Whether the system has devices that a link can lead to.
bool hasLinks();

/// A device of its own, with a link of that name to it while it lives, unless the name is empty; where there are no
/// such devices, a line over TCP whose name says so. Throws std::runtime_error when the link's place is taken, and
/// where there are no links.
std::unique_ptr<HostLine> makeTerminal(const std::filesystem::path& link);

}  // namespace virtual_printer
