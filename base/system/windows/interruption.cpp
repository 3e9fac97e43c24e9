// Ctrl-C, Ctrl-Break, and the console that is closed, of which the system gives a program about five seconds.
#include "base/system/interruption.h"

#include <windows.h>

#include <atomic>
#include <mutex>

namespace zentaro::base {

namespace {

std::atomic<int> requestCount = 0;
std::mutex wordsMutex;
std::string lastWords;

[[noreturn]] void endAtOnce() {
  constexpr UINT exitUnknown = 4;
  DWORD written = 0;
  const std::lock_guard lock(wordsMutex);
  ::WriteFile(::GetStdHandle(STD_ERROR_HANDLE), lastWords.data(), static_cast<DWORD>(lastWords.size()),
              &written, nullptr);
  ::ExitProcess(exitUnknown);
}

/// Runs on a thread of the system's. After the closing of the console the process is ended as soon as it comes
/// back: it leaves the time to the command instead.
BOOL WINAPI handle(DWORD event) {
  const bool isSecond = requestCount.fetch_add(1) > 0;
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) ::Sleep(INFINITE);
  if (isSecond) endAtOnce();
  return TRUE;
}

}  // namespace

Interruption::Interruption() { ::SetConsoleCtrlHandler(handle, TRUE); }

void Interruption::letWritingFail() {}  // a limit on files ends no program here

Interruption::~Interruption() { ::SetConsoleCtrlHandler(handle, FALSE); }

bool Interruption::isRequested() { return requestCount > 0; }

void Interruption::setLastWords(const std::string& text) {
  const std::lock_guard lock(wordsMutex);
  lastWords = text;
}

}  // namespace zentaro::base
