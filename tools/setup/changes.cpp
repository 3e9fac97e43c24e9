// Looking at what there is.
#include "tools/setup/changes.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>

#include "tools/connection/known_settings.h"

namespace zentaro::tools {

namespace {

namespace files = std::filesystem;

std::string target(const std::string& path) {
  std::error_code failed;
  const files::path real = files::canonical(path, failed);
  return failed ? path : real.string();
}

}  // namespace

std::optional<PortChoice> portFor(const std::string& device, const SettingsText& settings) {
  std::optional<PortChoice> unused;
  for (int port = 1; port <= portCount; ++port) {
    const std::string path = settings.value(portSection, portKey(port)).value_or("");
    if (!path.empty() && target(path) == target(device)) return PortChoice{portKey(port), true};
    if (path.empty() && !unused) unused = PortChoice{portKey(port)};
  }
  return unused;
}

std::string lastingName(const std::string& device, const std::string& root) {
  const files::path file = files::path(target(root + device)).filename();
  for (const char* folder : {"/dev/fiscal", "/dev/serial/by-id"}) {
    std::error_code failed;
    for (const auto& link : files::directory_iterator(root + folder, failed))
      if (files::read_symlink(link.path(), failed).filename() == file)
        return link.path().string().substr(root.size());
  }
  return device;
}

std::string accountName() {
  if (const char* caller = std::getenv("SUDO_USER"); caller != nullptr && ::geteuid() == 0) return caller;
  const passwd* account = ::getpwuid(::geteuid());
  return account == nullptr ? std::to_string(::geteuid()) : account->pw_name;
}

std::string ruleOfTheProgram() {
  std::error_code failed;
  const files::path program = files::read_symlink("/proc/self/exe", failed);
  const files::path rule = program.parent_path().parent_path() / "share/zentaro/70-zentaro.rules";
  return !failed && files::exists(rule, failed) ? rule.string() : "";
}

}  // namespace zentaro::tools
