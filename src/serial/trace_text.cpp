// Both traces look alike: a word and the time, then sixteen bytes a line.
#include "serial/trace_text.h"

#include "text/digits.h"

namespace zentaro {
namespace {

constexpr std::size_t charactersPerLine = 16;
constexpr std::size_t hexColumn = 3 * charactersPerLine;

std::u16string dumpLine(std::u16string_view characters, const CodePage& codePage) {
  std::u16string hex, text;
  for (const char16_t c : characters) {
    const std::uint8_t code = codePage.encode(c);
    hex += hexadecimalText(code, 2) + u" ";
    text += code < 32 ? u'.' : c;
  }
  hex.resize(hexColumn, u' ');
  return hex + text;
}

}  // namespace

std::u16string stampLine(std::u16string_view word, const LocalTime& time) {
  return std::u16string(word) + u" " + decimalText(time.day, 2) + u"-" + decimalText(time.month, 2) + u"-" +
         decimalText(time.year, 4) + u" " + clockText(time.hour, time.minute, time.second);
}

std::vector<std::u16string> dumpLines(std::u16string_view text, const CodePage& codePage) {
  std::vector<std::u16string> lines;
  for (; !text.empty(); text.remove_prefix(std::min(text.size(), charactersPerLine))) {
    lines.push_back(dumpLine(text.substr(0, charactersPerLine), codePage));
  }
  return lines;
}

}  // namespace zentaro
