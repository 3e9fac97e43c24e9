// The driver's last-error record: how its texts are made, and how it is shown.
#include "serial/last_error.h"

#include "platform/services.h"
#include "serial/modCOMM.h"
#include "text/trimming.h"
#include "text/unicode.h"
#include "util/lm_hex_str.h"

namespace zentaro::modCOMM {
namespace {

/// Empty for a code that the system has no text for.
std::u16string CommSystemMessage(std::uint32_t code) {
  const std::string system = services().serial->FormatMessageA(code);
  const std::u16string text = utf16(std::string_view(system).substr(0, system.find('\0')));
  return std::u16string(withoutSpaces<char16_t>(text));
}

}  // namespace

std::int32_t keepError(std::int32_t code, std::u16string_view function, std::u16string message) {
  driverState().lastError = {code, std::u16string(function), std::move(message)};
  return code;
}

std::int32_t CommRecordError(std::uint32_t code, std::u16string_view function) {
  return keepError(static_cast<std::int32_t>(code), function, CommSystemMessage(code));
}

std::int32_t CommRecordLineError(std::uint32_t code, std::u16string_view function, const PortEntry& entry) {
  std::u16string message = CommSystemMessage(code);
  std::uint32_t flags = 0, waiting = 0;
  services().serial->ClearCommError(entry.handle, flags, waiting);
  message += u"  COMM Error Flags = " + lmHexStr::HexStr(static_cast<std::int32_t>(flags), 1);
  return keepError(static_cast<std::int32_t>(code), function, std::move(message));
}

std::int32_t CommErrorText(std::u16string& text) {
  const LastErrorRecord& last = driverState().lastError;
  text = u"Error (" + utf16(std::to_string(last.code)) + u"): " + last.function + u" - " + last.message;
  return last.code;
}

}  // namespace zentaro::modCOMM
