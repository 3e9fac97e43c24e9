// Exchanges with the printer at COM5, one behind the other until one is not answered within 10 s; "queue": from a
// thread with a message queue to serve; "bare": without the library, by the few calls that any program needs;
// "tcp://HOST:PORT": there instead.
// Whoever is at the other end of the line measures.
#include <objbase.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <span>
#include <string>
#include <string_view>

#include "library.h"
#include "line.h"

namespace {

constexpr int timeOutSeconds = 10;

void byLibrary(const std::string& device) {
  bench::Library library(device, timeOutSeconds, 5);
  while (library.printer().PaperFeed() == 0) {
  }
}

/// A read waits for its first byte only: 9 ms at most where there is a queue to serve, else 250 ms.
HANDLE openBare(bool hasQueue) {
  HANDLE const port =
      ::CreateFileW(L"COM5", GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  DCB line{};
  line.DCBlength = sizeof line;
  COMMTIMEOUTS timeOuts{MAXDWORD, MAXDWORD, hasQueue ? 9U : 250U, 1000, 0};
  const bool done = port != INVALID_HANDLE_VALUE && ::GetCommState(port, &line) != 0 &&
                    ::BuildCommDCBW(L"9600,N,8,1", &line) != 0 && ::SetCommState(port, &line) != 0 &&
                    ::SetCommTimeouts(port, &timeOuts) != 0;
  return done ? port : INVALID_HANDLE_VALUE;
}

/// Reads until the checksum behind an ETX is there; false when nothing came for too long.
bool readAnswer(HANDLE port, bool hasQueue) {
  std::string answer;
  std::array<char, 256> buffer;
  const ULONGLONG begin = ::GetTickCount64();
  while (::GetTickCount64() - begin < timeOutSeconds * 1000ULL) {
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

int bare(bool hasQueue) {
  HANDLE const port = openBare(hasQueue);
  if (port == INVALID_HANDLE_VALUE) {
    std::fprintf(stderr, "COM5 does not open: error %lu\n", ::GetLastError());
    return 1;
  }
  constexpr std::string_view command = bench::itemCommand;
  do {
    DWORD written = 0;
    ::WriteFile(port, command.data(), static_cast<DWORD>(command.size()), &written, nullptr);
  } while (readAnswer(port, hasQueue));
  ::CloseHandle(port);
  return 0;
}

}  // namespace

int main(int count, char** values) {
  const std::span arguments(values, static_cast<std::size_t>(count));
  const auto isGiven = [&](std::string_view name) { return std::ranges::count(arguments, name) > 0; };
  const bool hasQueue = isGiven("queue");
  if (hasQueue) ::CoInitialize(nullptr);
  if (isGiven("bare")) return bare(hasQueue);
  const auto device =
      std::ranges::find_if(arguments, [](std::string_view word) { return word.starts_with("tcp:"); });
  byLibrary(device == arguments.end() ? "" : *device);
}
