// Ctrl-C, Ctrl-Break, and the console that is closed.
#include "virtual-printer/shell/ending.h"

#include <windows.h>

#include <atomic>

namespace virtual_printer {
namespace {

std::atomic<const Wake*> bell = nullptr;
std::atomic<bool> isAsked = false;

// Runs on a thread of the system's. Once it has come back from the closing of the console the process is ended:
// it waits there for the program to end by itself, for which the system gives it about five seconds.
BOOL WINAPI handle(DWORD event) {
  isAsked = true;
  if (const Wake* wake = bell.load()) wake->ring();
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) ::Sleep(INFINITE);
  return TRUE;
}

}  // namespace

Ending::Ending(const Wake& wake) {
  isAsked = false;
  bell = &wake;
  ::SetConsoleCtrlHandler(handle, TRUE);
}

// What comes now is too late to change anything: the program is ending.
Ending::~Ending() { bell = nullptr; }

bool Ending::isRequested() { return isAsked; }

}  // namespace virtual_printer
