// Names below /dev, accounts, and the rule of udev.
#include "tools/setup/changes.h"

#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>

namespace zentaro::tools {

namespace files = std::filesystem;

namespace {

files::path targetOf(const std::string& path) {
  std::error_code failed;
  const files::path real = files::canonical(path, failed);
  return failed ? files::path(path) : real;
}

}  // namespace

bool isRoot() { return ::geteuid() == 0; }

std::string lastingName(const std::string& device, const std::string& root) {
  const files::path file = targetOf(root + device).filename();
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

bool isMember(const std::string& account, const std::string& group) {
  const passwd* user = ::getpwnam(account.c_str());
  if (user == nullptr) return false;
  if (user->pw_uid == 0) return true;
  const ::group* wanted = ::getgrnam(group.c_str());
  std::array<gid_t, 1024> groups{};
  int count = groups.size();
  if (wanted == nullptr || ::getgrouplist(account.c_str(), user->pw_gid, groups.data(), &count) < 0)
    return false;
  return std::find(groups.begin(), groups.begin() + count, wanted->gr_gid) != groups.begin() + count;
}

std::string ruleOfTheProgram() {
  std::error_code failed;
  const files::path program = files::read_symlink("/proc/self/exe", failed);
  const files::path rule = program.parent_path().parent_path() / "share/zentaro/70-zentaro.rules";
  return !failed && files::exists(rule, failed) ? rule.string() : "";
}

}  // namespace zentaro::tools
