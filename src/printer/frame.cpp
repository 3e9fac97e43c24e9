// Building a command frame.
#include "printer/frame.h"

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "platform/services.h"
#include "util/lm_hex_str.h"

namespace zentaro {

std::uint8_t byteOf(char16_t character) { return services().codePage->encode(character); }
char16_t characterOf(std::uint8_t byte) { return services().codePage->decode(byte); }

std::int32_t checkSum(std::u16string_view text) {
  constexpr std::size_t longest = 32767;
  if (text.size() > longest) throw AutomationError(ErrorNumber::Overflow);
  std::int32_t sum = 0;
  for (const char16_t character : text) sum += byteOf(character);
  return sum;
}

std::u16string buildFrame(std::int16_t sequence, std::int16_t command, const Array& fields) {
  if (command < 0 || command > 255) throw AutomationError(ErrorNumber::InvalidArgument);
  std::u16string frame{STX, characterOf(static_cast<std::uint8_t>(sequence)),
                       characterOf(static_cast<std::uint8_t>(command))};
  for (const Variant& field : fields.items()) {
    const std::u16string text = toText(field);
    frame += FS;
    frame += text.empty() ? std::u16string{DEL} : text;
  }
  frame += ETX;
  return frame + lmHexStr::HexStr(checkSum(frame), 4);
}

}  // namespace zentaro
