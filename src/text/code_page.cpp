// Windows-1252, and texts through any code page.
#include "text/code_page.h"

#include <algorithm>

namespace zentaro {
namespace {

// The bytes 0x80 to 0x9F; all others are their own character.
constexpr std::array<char16_t, 32> middle = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                             0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                             0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                             0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr CodePage::Characters windows1252Characters() {
  CodePage::Characters characters{};
  for (std::size_t byte = 0; byte < characters.size(); ++byte) characters[byte] = static_cast<char16_t>(byte);
  std::copy(middle.begin(), middle.end(), characters.begin() + 0x80);
  return characters;
}

}  // namespace

std::uint8_t CodePage::search(char16_t character) const {
  const auto found = std::find(characters_.begin(), characters_.end(), character);
  return found == characters_.end() ? '?' : static_cast<std::uint8_t>(found - characters_.begin());
}

std::u16string CodePage::text(std::string_view bytes) const {
  std::u16string text(bytes.size(), u'\0');
  std::ranges::transform(bytes, text.begin(),
                         [this](char byte) { return decode(static_cast<std::uint8_t>(byte)); });
  return text;
}

std::string CodePage::bytes(std::u16string_view text) const {
  std::string bytes(text.size(), '\0');
  std::ranges::transform(text, bytes.begin(),
                         [this](char16_t character) { return static_cast<char>(encode(character)); });
  return bytes;
}

const CodePage& windows1252() {
  static constexpr CodePage codePage(windows1252Characters());
  return codePage;
}

}  // namespace zentaro
