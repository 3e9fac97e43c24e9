// The lines of a traffic trace as text.
#include "serial/trace_text.h"

#include "platform/services.h"
#include "util/lm_hex_str.h"

namespace zentaro {
namespace {

constexpr std::size_t charactersPerLine = 16;
constexpr std::size_t hexColumn = 3 * charactersPerLine;

std::u16string padded(int number, std::size_t width) {
  std::u16string digits;
  for (; digits.size() < width; number /= 10)
    digits.insert(digits.begin(), static_cast<char16_t>(u'0' + number % 10));
  return digits;
}

std::u16string dumpLine(std::u16string_view characters) {
  std::u16string hex, text;
  for (const char16_t c : characters) {
    const std::uint8_t code = services().codePage->encode(c);
    hex += lmHexStr::HexStr(code, 2) + u" ";
    text += code < 32 ? u'.' : c;
  }
  hex.resize(hexColumn, u' ');
  return hex + text;
}

}  // namespace

std::u16string stampLine(std::u16string_view word, const LocalTime& time) {
  return std::u16string(word) + u" " + padded(time.day, 2) + u"-" + padded(time.month, 2) + u"-" +
         padded(time.year, 4) + u" " + padded(time.hour, 2) + u":" + padded(time.minute, 2) + u":" +
         padded(time.second, 2);
}

std::vector<std::u16string> dumpLines(std::u16string_view text) {
  std::vector<std::u16string> lines;
  for (; !text.empty(); text.remove_prefix(std::min(text.size(), charactersPerLine))) {
    lines.push_back(dumpLine(text.substr(0, charactersPerLine)));
  }
  return lines;
}

}  // namespace zentaro
