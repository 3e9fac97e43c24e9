// Looking through the processes of the machine.
#include "tools/connection/holders.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

#include "base/terminal/language.h"
#include "text/ascii.h"

namespace zentaro::tools {

namespace {

namespace files = std::filesystem;

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
  return name + " (" + terminal::say("proceso", "process") + " " + process.filename().string() + ")";
}

// The printer's own side of a pseudo-terminal keeps its device open, too, and is in nobody's way.
bool isVirtualPrinter(const std::string& name) { return name.starts_with("zentaro-printer"); }

// What the links lead to, by which the system knows it.
files::path targetOf(const std::string& device) {
  std::error_code failed;
  const files::path target = files::canonical(device, failed);
  return failed ? files::path(device) : target;
}

// The processes that have the device open, of which those of other users cannot be seen.
std::vector<std::string> holdersOf(const files::path& device) {
  std::vector<std::string> holders;
  std::error_code failed;
  for (const auto& entry : files::directory_iterator("/proc", failed)) {
    const std::string id = entry.path().filename().string();
    if (!std::ranges::all_of(id, isAsciiDigit<char>) || id == std::to_string(::getpid())) continue;
    if (hasOpen(entry.path(), device)) holders.push_back(processName(entry.path()));
  }
  return holders;
}

}  // namespace

std::string holderOf(const std::string& device) {
  for (const std::string& name : holdersOf(targetOf(device)))
    if (!isVirtualPrinter(name)) return name;
  return {};
}

bool isVirtualPrinterOn(const std::string& device) {
  return std::ranges::any_of(holdersOf(targetOf(device)), isVirtualPrinter);
}

}  // namespace zentaro::tools
