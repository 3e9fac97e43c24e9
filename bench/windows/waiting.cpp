// Exchanges with the printer at COM5, one behind the other until one is not answered within 10 s; "queue": from a
// thread with a message queue to serve; "bare": with the calls that any program needs, and without the library.
// Whoever is at the other end of the line measures.
#include <objbase.h>

#include <array>
#include <string_view>

#include "library.h"
#include "line.h"

namespace {

constexpr int timeOutSeconds = 10;

void byLibrary() {
  bench::Library library("", timeOutSeconds, 5);
  while (library.printer().PaperFeed() == 0) {
  }
}

HANDLE openBare(bool hasQueue) {
  HANDLE const port =
      ::CreateFileW(L"COM5", GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  DCB line{};
  line.DCBlength = sizeof line;
  ::GetCommState(port, &line);
  ::BuildCommDCBW(L"9600,N,8,1", &line);
  ::SetCommState(port, &line);
  COMMTIMEOUTS timeOuts{MAXDWORD, MAXDWORD, hasQueue ? 9U : 250U, 1000,
                        0};  // of a read: until the first byte
  ::SetCommTimeouts(port, &timeOuts);
  return port;
}

/// Reads until the checksum behind an ETX is there; false when nothing came for too long.
bool readAnswer(HANDLE port, bool hasQueue) {
  std::string answer;
  std::array<char, 256> buffer;
  const ULONGLONG begin = ::GetTickCount64();
  while (::GetTickCount64() - begin < timeOutSeconds * 1000) {
    const auto end = answer.find('\x03');
    if (end != std::string::npos && answer.size() >= end + 5) return true;
    DWORD errors = 0, read = 0;
    COMSTAT state{};
    MSG message;
    while (hasQueue && ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) ::DispatchMessageW(&message);
    ::ClearCommError(port, &errors, &state);
    const DWORD wanted = std::min<DWORD>(std::max<DWORD>(state.cbInQue, 1), buffer.size());
    ::ReadFile(port, buffer.data(), wanted, &read, nullptr);
    answer.append(buffer.data(), read);
  }
  return false;
}

void bare(bool hasQueue) {
  HANDLE const port = openBare(hasQueue);
  do {
    DWORD written = 0;
    ::WriteFile(port, bench::itemCommand.data(), static_cast<DWORD>(bench::itemCommand.size()), &written,
                nullptr);
  } while (readAnswer(port, hasQueue));
  ::CloseHandle(port);
}

}  // namespace

int main(int count, char** arguments) {
  bool hasQueue = false, isBare = false;
  for (const std::string_view argument : std::vector<std::string_view>(arguments + 1, arguments + count))
    (argument == "queue" ? hasQueue : isBare) = true;
  if (hasQueue) ::CoInitialize(nullptr);
  isBare ? bare(hasQueue) : byLibrary();
}
