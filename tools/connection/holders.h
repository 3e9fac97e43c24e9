// Who else has a device open, as far as this user may see.
#pragma once

#include <string>

namespace zentaro::tools {

/// "minicom (process 4711)"; empty for nobody. A virtual printer at the other end of it does not count.
std::string holderOf(const std::string& device);

/// Whether a virtual printer is at the other end of the device.
bool isVirtualPrinterOn(const std::string& device);

}  // namespace zentaro::tools
