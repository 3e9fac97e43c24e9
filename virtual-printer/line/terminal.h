// The line as a device that a host opens like a serial port.
#pragma once

#include <filesystem>
#include <memory>

#include "virtual-printer/line/host_line.h"

namespace virtual_printer {

/// A device of its own, with a link of that name to it while it lives, unless the name is empty. Throws
/// std::runtime_error when the link's place is taken, and where the system has no such devices.
std::unique_ptr<HostLine> makeTerminal(const std::filesystem::path& link);

}  // namespace virtual_printer
