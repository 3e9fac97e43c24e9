// The desktop's own way to open a page.
#include "virtual-printer/web/browser.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace virtual_printer {
namespace {

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

}  // namespace

void openInBrowser(const std::string& url) {
  if (!isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY") && !isSet("BROWSER")) return;
  // The shell goes at once and leaves the browser to the system, so that nobody has to wait for it.
  std::string command = "xdg-open \"$0\" >/dev/null 2>&1 </dev/null &";
  std::array<char, 3> shell{"sh"}, option{"-c"};
  std::string page = url;
  std::array<char*, 5> words{shell.data(), option.data(), command.data(), page.data(), nullptr};
  pid_t process = 0;
  if (::posix_spawnp(&process, "sh", nullptr, nullptr, words.data(), ::environ) == 0)
    ::waitpid(process, nullptr, 0);
}

}  // namespace virtual_printer
