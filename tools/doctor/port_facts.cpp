// Looking at a device, and judging what was seen.
#include "doctor/port_facts.h"

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "text/ascii.h"

namespace zentaro::tools {

namespace {

namespace files = std::filesystem;

std::string groupName(gid_t id) {
  const group* entry = ::getgrgid(id);
  return entry == nullptr ? std::to_string(id) : entry->gr_name;
}

bool hasOpen(const files::path& process, const files::path& device) {
  std::error_code gone;  // processes end while one looks, and those of other users cannot be seen
  for (const auto& entry : files::directory_iterator(process / "fd", gone)) {
    if (files::read_symlink(entry.path(), gone) == device) return true;
  }
  return false;
}

std::string processName(const files::path& process) {
  std::string name;
  std::getline(std::ifstream(process / "comm"), name);
  return name + " (process " + process.filename().string() + ")";
}

// The printer's own side of a pseudo-terminal keeps its device open, too, and is in nobody's way.
bool isVirtualPrinter(const std::string& name) { return name.starts_with("zentaro-printer"); }

std::string holderOf(const files::path& device) {
  std::error_code failed;
  for (const auto& entry : files::directory_iterator("/proc", failed)) {
    const std::string id = entry.path().filename().string();
    if (!std::ranges::all_of(id, isAsciiDigit<char>) || id == std::to_string(::getpid())) continue;
    if (!hasOpen(entry.path(), device)) continue;
    if (std::string name = processName(entry.path()); !isVirtualPrinter(name)) return name;
  }
  return {};
}

// How the user names another device for this port.
std::string otherPath(const PortFacts& facts) {
  return facts.name.starts_with("COM")
             ? "\"zentaro settings set " + facts.name + " PATH\" changes the device of this port"
             : "--device with another path";
}

}  // namespace

PortFacts examinePort(const std::string& name, const std::string& device, bool isConfigured) {
  PortFacts facts;
  facts.name = name;
  facts.device = device;
  facts.isConfigured = isConfigured;
  struct stat status {};
  facts.exists = ::stat(device.c_str(), &status) == 0;
  if (!facts.exists) return facts;
  std::error_code failed;
  const files::path target = files::canonical(device, failed);
  if (!failed) facts.device = target.string();
  facts.isCharacterDevice = S_ISCHR(status.st_mode);
  facts.canReadAndWrite = ::access(device.c_str(), R_OK | W_OK) == 0;
  facts.group = groupName(status.st_gid);
  facts.holder = holderOf(facts.device);
  return facts;
}

Finding judgePort(const PortFacts& facts) {
  if (!facts.exists && !facts.isConfigured) return {false, "not there", ""};
  if (!facts.exists) {
    return {true, "the device is missing",
            "connect the adapter: \"dmesg | tail\" shows the name that it gets, often /dev/ttyUSB0\n" +
                otherPath(facts)};
  }
  if (!facts.isCharacterDevice) return {true, "this is no serial device", otherPath(facts)};
  if (!facts.canReadAndWrite) {
    return {true, "this user may not read and write the device (group " + facts.group + ")",
            "\"sudo usermod -aG " + facts.group + " $USER\", then log out and in again"};
  }
  if (!facts.holder.empty()) {
    return {true, "the port is taken by " + facts.holder, "end that program, or use another port"};
  }
  return {false, "free, and this user may use it", ""};
}

}  // namespace zentaro::tools
