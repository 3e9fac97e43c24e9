// The console of Windows, whose own code page is given back at the end.
#include "base/terminal/console.h"

#include <fcntl.h>
#include <io.h>

#include "base/terminal/windows/shell.h"
#include "base/terminal/windows/text.h"

namespace zentaro::terminal {

namespace {

HANDLE handleOf(Stream stream) {
  constexpr DWORD names[] = {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
  return ::GetStdHandle(names[static_cast<int>(stream)]);
}

constexpr DWORD escapeSequences = 0x0004;  // ENABLE_VIRTUAL_TERMINAL_PROCESSING, from Windows 10 on

}  // namespace

bool isTerminal(Stream stream) {
  DWORD mode = 0;
  return ::GetConsoleMode(handleOf(stream), &mode) != 0;
}

std::size_t terminalColumns() {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (::GetConsoleScreenBufferInfo(handleOf(Stream::Output), &info) == 0) return 0;
  return static_cast<std::size_t>(info.srWindow.Right) - static_cast<std::size_t>(info.srWindow.Left) + 1;
}

bool hasColours() {
  DWORD mode = 0;
  HANDLE const output = handleOf(Stream::Output);
  return ::GetConsoleMode(output, &mode) != 0 && ::SetConsoleMode(output, mode | escapeSequences) != 0;
}

std::string accountLanguage() {
  return PRIMARYLANGID(::GetUserDefaultUILanguage()) == LANG_SPANISH ? "es" : "en";
}

Utf8Console::Utf8Console() : before_(::GetConsoleOutputCP()) {
  for (const int stream : {0, 1, 2}) ::_setmode(stream, _O_BINARY);
  if (before_ != 0) ::SetConsoleOutputCP(CP_UTF8);
}

Utf8Console::~Utf8Console() {
  if (before_ != 0) ::SetConsoleOutputCP(before_);
}

// What main() is given stands in the code page of the system.
std::vector<std::string> commandLineWords(int, char**) {
  int count = 0;
  wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<std::string> made;
  made.reserve(static_cast<std::size_t>(count));
  for (int index = 0; index < count; ++index) made.push_back(narrow(words[index]));
  ::LocalFree(words);
  return made;
}

bool waitForInput(int milliseconds) {
  return ::WaitForSingleObject(handleOf(Stream::Input), static_cast<DWORD>(milliseconds)) == WAIT_OBJECT_0;
}

}  // namespace zentaro::terminal
