// The system's own code page for programs without Unicode.
#include <algorithm>

#include "platform/windows/system.h"
#include "platform/windows/windows_services.h"

namespace zentaro::windows {
namespace {

char16_t characterOf(UINT codePage, char byte) {
  wchar_t character = 0;
  const int length = ::MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, &byte, 1, &character, 1);
  return length == 1 ? static_cast<char16_t>(character) : static_cast<std::uint8_t>(byte);
}

/// A byte that the code page does not assign, or whose character another byte has already, gets one of the
/// private use area.
CodePage::Characters charactersOf(UINT codePage) {
  CodePage::Characters characters{};
  for (std::size_t byte = 0; byte < characters.size(); ++byte) {
    const auto end = characters.begin() + static_cast<std::ptrdiff_t>(byte);
    const char16_t character = characterOf(codePage, static_cast<char>(byte));
    const bool isTaken = std::find(characters.begin(), end, character) != end;
    *end = isTaken ? static_cast<char16_t>(0xF700 + byte) : character;
  }
  return characters;
}

const CodePage& codePageInForce() {
  const UINT number = ::GetACP();
  CPINFO information{};
  const bool isSingleByte = ::GetCPInfo(number, &information) != 0 && information.MaxCharSize == 1;
  if (!isSingleByte || number == 1252) return windows1252();
  return *new CodePage(charactersOf(number));
}

}  // namespace

const CodePage& ansiCodePage() {
  static const CodePage& codePage = codePageInForce();
  return codePage;
}

}  // namespace zentaro::windows
