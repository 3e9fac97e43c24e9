// Looking at devices.
#include "tools/doctor/port_facts.h"

#include <grp.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "tools/connection/holders.h"

namespace zentaro::tools {

namespace {

std::string groupName(gid_t id) {
  const group* entry = ::getgrgid(id);
  return entry == nullptr ? std::to_string(id) : entry->gr_name;
}

// A character device that the system counts among others than the serial ones, such as /dev/null.
bool isOtherKind(dev_t device) {
  std::error_code unknown;  // as a pseudo-terminal is
  const std::string number = std::to_string(major(device)) + ":" + std::to_string(minor(device));
  const std::filesystem::path kind =
      std::filesystem::read_symlink("/sys/dev/char/" + number + "/subsystem", unknown);
  return !unknown && kind.filename() != "tty";
}

}  // namespace

const char *const deviceBeginning = "/", *const deviceExample = "/dev/serial/by-id/...";

bool looksLikeDevice(const std::string& name) { return name.starts_with(deviceBeginning); }

std::string whoTellsHolder() {
  return terminal::say("{} dice cuál", "{} says which one", {terminal::quoted("sudo zentaro doctor")});
}

PortFacts lookAtPort(const std::string& name, const std::string& device, bool isConfigured) {
  PortFacts facts;
  facts.name = name;
  facts.device = device;
  facts.isConfigured = isConfigured;
  struct stat status {};
  facts.exists = ::stat(device.c_str(), &status) == 0;
  if (!facts.exists) return facts;
  std::error_code failed;
  const std::filesystem::path target = std::filesystem::canonical(device, failed);
  if (!failed) facts.device = target.string();
  facts.isSerial = S_ISCHR(status.st_mode) && !isOtherKind(status.st_rdev);
  facts.canReadAndWrite = ::access(device.c_str(), R_OK | W_OK) == 0;
  facts.group = groupName(status.st_gid);
  facts.holder = holderOf(facts.device);
  return facts;
}

std::vector<SerialDevice> serialDevices(const std::string& root) {
  std::vector<SerialDevice> devices;
  std::error_code failed;
  for (const auto& entry : std::filesystem::directory_iterator(root + "/sys/class/tty", failed)) {
    const std::string name = entry.path().filename().string();
    // Only those with hardware have a device; ttyS4 and onward often have one without a UART, which its type tells.
    if (!std::filesystem::exists(entry.path() / "device", failed) || name.starts_with("console")) continue;
    std::string type;
    std::getline(std::ifstream(entry.path() / "type"), type);
    if (type == "0") continue;
    const std::filesystem::path driver =
        std::filesystem::read_symlink(entry.path() / "device" / "driver", failed);
    devices.push_back({"/dev/" + name, driver.filename().string(), {}});
  }
  for (const auto& link : std::filesystem::directory_iterator(root + "/dev/serial/by-id", failed)) {
    const std::string target = std::filesystem::read_symlink(link.path(), failed).filename().string();
    for (SerialDevice& device : devices) {
      if (device.path == "/dev/" + target) device.byId = link.path().string().substr(root.size());
    }
  }
  std::ranges::sort(devices, {}, &SerialDevice::path);
  return devices;
}

}  // namespace zentaro::tools
