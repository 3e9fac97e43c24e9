// The fixed descriptions, and which error a failing file is.
#include "automation/automation_error.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "text/unicode.h"

namespace zentaro {
namespace {

struct Description {
  ErrorNumber number;
  std::u16string_view text;
};
constexpr Description descriptions[] = {
    {ErrorNumber::InvalidArgument, u"Invalid procedure call or argument"},
    {ErrorNumber::Overflow, u"Overflow"},
    {ErrorNumber::SubscriptOutOfRange, u"Subscript out of range"},
    {ErrorNumber::DivisionByZero, u"Division by zero"},
    {ErrorNumber::TypeMismatch, u"Type mismatch"},
    {ErrorNumber::BadFileNumber, u"Bad file name or number"},
    {ErrorNumber::FileNotFound, u"File not found"},
    {ErrorNumber::DeviceInputOutput, u"Device I/O error"},
    {ErrorNumber::DiskFull, u"Disk full"},
    {ErrorNumber::PathFileAccess, u"Path/File access error"},
    {ErrorNumber::PathNotFound, u"Path not found"},
    {ErrorNumber::ObjectNotSet, u"Object variable not set"},
    {ErrorNumber::InvalidUseOfNull, u"Invalid use of Null"},
    {ErrorNumber::CannotCreateObject, u"Cannot create object"},
    {ErrorNumber::NoSuchMember, u"Object does not support this property or method"},
    {ErrorNumber::WrongArguments, u"Wrong number of arguments or invalid property assignment"},
};

std::u16string descriptionOf(ErrorNumber number) {
  const auto* const found = std::ranges::find(descriptions, number, &Description::number);
  return std::u16string(found == std::end(descriptions) ? u"Automation error" : found->text);
}

struct FileReason {
  std::errc reason;
  ErrorNumber number;
};
constexpr FileReason fileReasons[] = {
    {std::errc::no_such_file_or_directory, ErrorNumber::PathNotFound},
    {std::errc::not_a_directory, ErrorNumber::PathNotFound},
    {std::errc::no_space_on_device, ErrorNumber::DiskFull},
    {std::errc::permission_denied, ErrorNumber::PathFileAccess},
    {std::errc::operation_not_permitted, ErrorNumber::PathFileAccess},
    {std::errc::is_a_directory, ErrorNumber::PathFileAccess},
    {std::errc::read_only_file_system, ErrorNumber::PathFileAccess},
    {std::errc::bad_file_descriptor, ErrorNumber::BadFileNumber},
};

}  // namespace

AutomationError::AutomationError(ErrorNumber number)
    : AutomationError(static_cast<int>(number), u"Zentaro", descriptionOf(number)) {}

AutomationError::AutomationError(int number, std::u16string source, std::u16string description)
    : number_(number),
      source_(std::move(source)),
      description_(std::move(description)),
      what_(utf8(description_)) {}

AutomationError fileError(const std::error_code& reason) {
  for (const FileReason& known : fileReasons) {
    if (reason == known.reason) return AutomationError(known.number);
  }
  return AutomationError(ErrorNumber::DeviceInputOutput);
}

}  // namespace zentaro
