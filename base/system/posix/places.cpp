// By the environment, and by the account's home where it says nothing.
#include "base/system/places.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

#include "base/terminal/language.h"

namespace zentaro::system {

namespace {

std::filesystem::path home() {
  if (const char* named = std::getenv("HOME"); named != nullptr && *named == '/') return named;
  // A program that has no HOME, such as one that cron or a web server starts.
  const passwd* account = ::getpwuid(::geteuid());
  if (account != nullptr && account->pw_dir != nullptr && *account->pw_dir == '/') return account->pw_dir;
  throw std::runtime_error(terminal::say("la cuenta {} no tiene carpeta propia: defina HOME",
                                         "the account {} has no home: set HOME",
                                         {std::to_string(::geteuid())}));
}

}  // namespace

std::filesystem::path userStateFolder() {
  const char* state = std::getenv("XDG_STATE_HOME");
  const bool isGiven = state != nullptr && *state == '/';
  return (isGiven ? std::filesystem::path(state) : home() / ".local/state") / "zentaro";
}

std::filesystem::path machineStateFolder() { return "/var/lib/zentaro"; }

}  // namespace zentaro::system
