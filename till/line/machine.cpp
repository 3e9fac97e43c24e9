// Following a port's name to its device.
#include "till/line/machine.h"

#include <filesystem>

#include "automation/conversions.h"
#include "base/files/paths.h"
#include "platform/system_paths.h"

namespace zentaro::till {

std::string deviceOf(const CZentaro& printer) {
  return resolvedDevice("COM" + std::to_string(toInt16(printer.CommPort)));
}

std::string resolvedDevice(const std::string& name) {
  std::string path = devicePath(name);
  if (path.empty() || path.find("://") != std::string::npos) return path.empty() ? name : path;
  std::error_code failed;
  const std::filesystem::path target = std::filesystem::canonical(files::pathOf(path), failed);
  if (failed) return path;
  for (const auto& link : std::filesystem::directory_iterator("/dev/serial/by-id", failed))
    if (std::filesystem::canonical(link.path(), failed) == target) return link.path().string();
  return target.string();
}

}  // namespace zentaro::till
