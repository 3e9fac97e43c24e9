// Windows-1252 to UTF-8.
#include "virtual-printer/wire/codepage.h"

#include <array>

namespace virtual_printer {
namespace {

// 0x80 to 0x9F; 0 where nothing is assigned. From 0xA0 on a byte is its own code point.
constexpr std::array<char32_t, 32> high{0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                        0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                        0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                        0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

void append(std::string& text, char32_t point) {
  if (point < 0x80) {
    text += static_cast<char>(point);
  } else if (point < 0x800) {
    text += static_cast<char>(0xC0 | (point >> 6));
    text += static_cast<char>(0x80 | (point & 0x3F));
  } else {
    text += static_cast<char>(0xE0 | (point >> 12));
    text += static_cast<char>(0x80 | ((point >> 6) & 0x3F));
    text += static_cast<char>(0x80 | (point & 0x3F));
  }
}

}  // namespace

std::string utf8FromWire(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    char32_t point = static_cast<unsigned char>(byte);
    if (point >= 0x80 && point < 0xA0) point = high[point - 0x80];
    append(text, point < 0x20 || point == 0x7F ? U'.' : point);
  }
  return text;
}

}  // namespace virtual_printer
