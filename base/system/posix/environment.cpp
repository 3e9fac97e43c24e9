// By the tables of accounts and groups, and by what the kernel says of itself.
#include "base/system/environment.h"

#include <grp.h>
#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace zentaro::system {

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::string accountText() {
  const passwd* account = ::getpwuid(::geteuid());
  std::string text = account == nullptr ? std::to_string(::geteuid()) : account->pw_name;
  std::vector<gid_t> groups(static_cast<std::size_t>(std::max(0, ::getgroups(0, nullptr))));
  if (::getgroups(static_cast<int>(groups.size()), groups.data()) < 0) groups.clear();
  groups.push_back(::getegid());
  std::ranges::sort(groups);
  groups.erase(std::unique(groups.begin(), groups.end()),
               groups.end());  // clang 14 knows no ranges::unique here
  text += ":";
  for (const gid_t id : groups) {
    const group* entry = ::getgrgid(id);
    text += " " + (entry == nullptr ? std::to_string(id) : std::string(entry->gr_name));
  }
  return text;
}

std::string systemText() {
  utsname system{};
  ::uname(&system);
  return std::string(system.sysname) + " " + system.release + " " + system.machine;
}

}  // namespace zentaro::system
