// SIGINT, SIGTERM and SIGHUP.
#include "virtual-printer/shell/ending.h"

#include <array>
#include <atomic>
#include <csignal>

namespace virtual_printer {
namespace {

constexpr std::array endingSignals{SIGINT, SIGTERM, SIGHUP};

std::atomic<const Wake*> bell = nullptr;
std::atomic<bool> isAsked = false;

void handle(int) {
  isAsked = true;
  if (const Wake* wake = bell.load()) wake->ring();
}

// What was ignored before stays so: nohup.
void setAll(void (*handler)(int)) {
  struct sigaction action {
  }, before{};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  for (const int number : endingSignals) {
    ::sigaction(number, nullptr, &before);
    if (before.sa_handler != SIG_IGN) ::sigaction(number, &action, nullptr);
  }
}

}  // namespace

// A background printer that looks at a terminal's input, or writes where nobody reads, gets an
// error instead of a signal.
Ending::Ending(const Wake& wake) {
  ::signal(SIGPIPE, SIG_IGN);
  ::signal(SIGTTIN, SIG_IGN);
  isAsked = false;
  bell = &wake;
  setAll(handle);
}

// What comes now is too late to change anything: the program is ending.
Ending::~Ending() {
  setAll(SIG_IGN);
  bell = nullptr;
}

bool Ending::isRequested() { return isAsked; }

}  // namespace virtual_printer
