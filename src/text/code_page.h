// The single-byte code page that maps the characters of a frame to bytes and back.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace zentaro {

class CodePage {
 public:
  /// The character of every byte, no two of them equal.
  using Characters = std::array<char16_t, 256>;
  constexpr explicit CodePage(const Characters& characters) : characters_(characters) {}

  constexpr char16_t decode(std::uint8_t byte) const { return characters_[byte]; }
  /// A character outside the code page becomes "?".
  std::uint8_t encode(char16_t character) const {
    // Nearly every character is its own byte.
    const bool isItself = character < characters_.size() && characters_[character] == character;
    return isItself ? static_cast<std::uint8_t>(character) : search(character);
  }

  bool has(char16_t character) const { return character == u'?' || encode(character) != '?'; }

  std::u16string text(std::string_view bytes) const;
  std::string bytes(std::u16string_view text) const;

 private:
  std::uint8_t search(char16_t character) const;

  Characters characters_;
};

/// Windows-1252; its five unassigned bytes stand for U+0081, U+008D, U+008F, U+0090 and U+009D.
const CodePage& windows1252();

}  // namespace zentaro
