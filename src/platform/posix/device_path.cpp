// Which device a port's name stands for.
#include <charconv>

#include "platform/setting_keys.h"
#include "platform/system_paths.h"
#include "text/unicode.h"

namespace zentaro {
namespace {

/// The n of "COMn", without a zero in front; 0 for any other name.
int portNumber(std::string_view name) {
  constexpr std::string_view prefix = "COM";
  if (!name.starts_with(prefix) || name.substr(prefix.size()).starts_with('0')) return 0;
  int number = 0;
  const auto [end, error] = std::from_chars(name.data() + prefix.size(), name.data() + name.size(), number);
  return error == std::errc{} && end == name.data() + name.size() && number > 0 ? number : 0;
}

}  // namespace

std::string devicePath(const std::string& deviceName) {
  const int number = portNumber(deviceName);
  if (number == 0) return deviceName.find('/') == std::string::npos ? std::string{} : deviceName;
  const std::string path =
      utf8(services().settings->read(settingsApplication, driverSection, deviceName, u""));
  return path.empty() ? "/dev/ttyS" + std::to_string(number - 1) : path;
}

}  // namespace zentaro
