// Which device a port's name stands for.
#include "platform/port_number.h"
#include "platform/setting_keys.h"
#include "platform/system_paths.h"
#include "text/unicode.h"

namespace zentaro {

std::string ownDevice(int port) { return "/dev/ttyS" + std::to_string(port - 1); }

std::string devicePath(const std::string& deviceName) {
  const int number = portNumber(deviceName);
  if (number == 0) return deviceName.find('/') == std::string::npos ? std::string{} : deviceName;
  const std::string path =
      utf8(services().settings->read(settingsApplication, driverSection, deviceName, u""));
  return path.empty() ? ownDevice(number) : path;
}

}  // namespace zentaro
