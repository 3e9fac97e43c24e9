// The command frame, and the bytes that both frames are made of.
//
//   command  STX  sequence  command code  { FS  field }  ETX  checksum
//   answer   STX  sequence  command code  FS  printer status  FS  fiscal status  { FS  field }  ETX  checksum
//
// The checksum is the sum of all bytes from STX through ETX in upper-case hexadecimal digits, four at least.
// Frames are held as text whose characters stand for bytes in a code page.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "automation/variant.h"
#include "text/code_page.h"

namespace zentaro {

inline constexpr char16_t STX = 0x02;
inline constexpr char16_t ETX = 0x03;
inline constexpr char16_t waitByte = 0x0C;
inline constexpr char16_t FS = 0x1C;
inline constexpr char16_t DEL = 0x7F;  // stands for an empty field of a command

/// The sequence number of the frames of one printer object: 0x21 to 0x7F, over and over.
class SequenceNumber {
 public:
  std::int16_t current() const { return current_; }
  void advance() { current_ = current_ >= last ? first : static_cast<std::int16_t>(current_ + 1); }

 private:
  static constexpr std::int16_t first = 33, last = 127;
  std::int16_t current_ = first;
};

/// The sum of the bytes that the characters stand for. Raises 6 (overflow) for more than 32,767 characters.
std::int32_t CheckSum(std::u16string_view text, const CodePage& codePage);

/// A complete command frame. Raises 5 for a command outside 0 to 255, 9 for an array without
/// bounds, and what the conversion of a field to text raises.
std::u16string buildFrame(std::int16_t sequence, std::int16_t command, const Array& fields,
                          const CodePage& codePage);

}  // namespace zentaro
