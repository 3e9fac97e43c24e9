// Which device a port's name stands for.
#include "platform/port_number.h"
#include "platform/setting_keys.h"
#include "platform/system_paths.h"
#include "text/unicode.h"

namespace zentaro {
namespace {

/// From COM10 on the system wants the name of the device itself.
std::string fullName(const std::string& device) {
  constexpr int lastShortName = 9;
  return portNumber(device) > lastShortName ? R"(\\.\)" + device : device;
}

}  // namespace

std::string ownDevice(int port) { return "COM" + std::to_string(port); }

std::string devicePath(const std::string& deviceName) {
  if (portNumber(deviceName) == 0) return deviceName;
  const std::string device =
      utf8(services().settings->read(settingsApplication, driverSection, deviceName, u""));
  return fullName(device.empty() ? deviceName : device);
}

}  // namespace zentaro
