// The single-byte code page that maps the characters of a frame to bytes and back.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zentaro {

class CodePage {
 public:
  virtual ~CodePage() = default;
  /// Every byte has a character, and encoding that character gives the byte again.
  virtual char16_t decode(std::uint8_t byte) const = 0;
  /// A character outside the code page becomes "?".
  virtual std::uint8_t encode(char16_t character) const = 0;

  std::u16string text(std::string_view bytes) const;
  std::string bytes(std::u16string_view text) const;
};

/// Windows-1252; its five unassigned bytes stand for U+0081, U+008D, U+008F, U+0090 and U+009D.
const CodePage& windows1252();

}  // namespace zentaro
