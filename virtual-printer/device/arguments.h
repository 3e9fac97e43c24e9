// Reading of a command's fields. A field that is not what the command needs refuses the command.
#pragma once

#include <cstdint>
#include <string>

#include "virtual-printer/fiscal/books.h"
#include "virtual-printer/fiscal/refusal.h"
#include "virtual-printer/wire/frame.h"

namespace virtual_printer {

class Arguments {
 public:
  explicit Arguments(const Command& command) : command_{command} {}

  /// Fields count from 0; a field that was not sent is empty.
  std::string text(std::size_t index) const;
  /// The bytes as sent, for letters that must match exactly.
  std::string raw(std::size_t index) const;
  /// A whole number of at most 15 digits.
  std::int64_t number(std::size_t index) const;
  /// An amount of cents; a negative one is out of range rather than malformed.
  Cents amount(std::size_t index) const;
  /// A tax rate in hundredths of a percent, up to 99.99 %.
  Rate rate(std::size_t index) const;
  /// A field "yymmdd".
  std::chrono::local_days date(std::size_t index) const;
  /// A field "hhmmss".
  std::chrono::seconds time(std::size_t index) const;

 private:
  const Command& command_;
};

}  // namespace virtual_printer
