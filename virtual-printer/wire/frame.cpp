// Encoding of answers and decoding of commands whose checksum has been found right.
#include "virtual-printer/wire/frame.h"

#include <array>
#include <cstdio>
#include <numeric>

namespace virtual_printer {

unsigned byteSum(std::string_view bytes) {
  return std::accumulate(bytes.begin(), bytes.end(), 0U,
                         [](unsigned sum, char byte) { return sum + static_cast<unsigned char>(byte); });
}

std::string hexadecimal(unsigned value, int width) {
  std::array<char, 16> digits{};
  const int length = std::snprintf(digits.data(), digits.size(), "%0*X", width, value);
  return {digits.data(), static_cast<std::size_t>(length)};
}

std::string hexBytes(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes)
    text += (text.empty() ? "" : " ") + hexadecimal(static_cast<unsigned char>(byte), 2);
  return text;
}

std::string encodeAnswer(const Command& asked, const Answer& answer) {
  std::string frame{stx, asked.sequence, static_cast<char>(asked.code)};
  frame += fs + hexadecimal(answer.printerStatus, 4);
  frame += fs + hexadecimal(answer.fiscalStatus, 4);
  for (const std::string& field : answer.fields) frame += fs + (field.empty() ? std::string{del} : field);
  frame += etx;
  return frame + hexadecimal(byteSum(frame) & 0xFFFFU, 4);
}

Command decodeCommand(std::string_view body) {
  Command command{body[0], static_cast<std::uint8_t>(body[1]), {}};
  for (std::size_t at = body.find(fs, 2); at != std::string_view::npos;) {
    const std::size_t next = body.find(fs, at + 1);
    const std::string_view field = body.substr(at + 1, next == std::string_view::npos ? next : next - at - 1);
    command.fields.emplace_back(field.size() == 1 && field[0] == del ? std::string_view{} : field);
    at = next;
  }
  return command;
}

}  // namespace virtual_printer
