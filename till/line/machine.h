// What a machine is called: the same name whatever way leads to it.
#pragma once

#include <string>

#include "printer/czentaro.h"

namespace zentaro::till {

/// The device behind the port of the object, after settings and links: the name below /dev/serial/by-id, which
/// stays when the device is plugged in elsewhere, or the path; "tcp://host:port" as it is.
std::string deviceOf(const CZentaro& printer);
/// The same of a device by its path, or of "COM1".
std::string resolvedDevice(const std::string& name);

}  // namespace zentaro::till
