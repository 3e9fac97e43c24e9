// The one exception type of the library: an automation error with number, source and description.
#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <system_error>

#include "zentaro_api.h"

namespace zentaro {

/// The numbers that the library raises itself; their descriptions are fixed texts.
enum class ErrorNumber : int {
  InvalidArgument = 5,
  Overflow = 6,
  SubscriptOutOfRange = 9,
  DivisionByZero = 11,
  TypeMismatch = 13,
  BadFileNumber = 52,
  FileNotFound = 53,
  DeviceInputOutput = 57,
  DiskFull = 61,
  PathFileAccess = 75,
  PathNotFound = 76,
  ObjectNotSet = 91,
  InvalidUseOfNull = 94,
  CannotCreateObject = 429,
  NoSuchMember = 438,
  WrongArguments = 450,
};

class ZENTARO_API AutomationError : public std::exception {
 public:
  /// An error of the platform, with its fixed description and the source "Zentaro".
  explicit AutomationError(ErrorNumber number);
  AutomationError(int number, std::u16string source, std::u16string description);

  int number() const { return number_; }
  const std::u16string& source() const { return source_; }
  const std::u16string& description() const { return description_; }
  /// The description in UTF-8.
  const char* what() const noexcept override { return what_.c_str(); }

 private:
  int number_;
  std::u16string source_;
  std::u16string description_;
  std::string what_;
};

/// The error for a file that could not be opened or written: 52, 57, 61, 75 or 76.
AutomationError fileError(const std::error_code& reason);

}  // namespace zentaro
