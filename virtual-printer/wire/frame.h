// The two frames of the printer's line, as plain values and as bytes.
//
//   command  STX  sequence  code  (FS field)*                                       ETX  checksum
//   answer   STX  sequence  code   FS printer status  FS fiscal status  (FS field)* ETX  checksum
//
// The checksum is the sum of the bytes from STX to ETX in upper-case hexadecimal digits: at least four in a
// command, exactly four (the sum modulo 65,536) in an answer. A lone DEL stands for an empty command field.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

inline constexpr char stx = '\x02', etx = '\x03', fs = '\x1C', del = '\x7F', waitByte = '\x0C';
inline constexpr std::size_t checksumDigits = 4;

struct Command {
  char sequence = 0;
  std::uint8_t code = 0;
  std::vector<std::string> fields;  // bytes as received; a lone DEL has become the empty text
  std::string frame{};              // as it came, from STX to the checksum; none when it came by no line

  bool operator==(const Command&) const = default;
};

struct Answer {
  std::uint16_t printerStatus = 0;
  std::uint16_t fiscalStatus = 0;
  std::vector<std::string> fields;

  bool operator==(const Answer&) const = default;
};

/// An empty field would vanish at the receiver and move the fields after it, so it goes out as DEL.
std::string encodeAnswer(const Command& asked, const Answer& answer);

/// Takes the bytes between STX and ETX, both excluded; at least two.
Command decodeCommand(std::string_view body);

/// Upper-case hexadecimal digits, padded with zeros to the width.
std::string hexadecimal(unsigned value, int width);

/// Two digits a byte, a blank between them.
std::string hexBytes(std::string_view bytes);

unsigned byteSum(std::string_view bytes);

}  // namespace virtual_printer
