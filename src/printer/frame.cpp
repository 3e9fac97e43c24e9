// Each field as its text behind an FS, an empty one as a DEL, and the sum of it all.
#include "printer/frame.h"

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "util/lm_hex_str.h"

namespace zentaro {

std::int32_t CheckSum(std::u16string_view text, const CodePage& codePage) {
  constexpr std::size_t longest = 32767;
  if (text.size() > longest) throw AutomationError(ErrorNumber::Overflow);
  std::int32_t sum = 0;
  for (const char16_t character : text) sum += codePage.encode(character);
  return sum;
}

namespace {

constexpr std::size_t usualFrame = 128;  // of a frame; a longer one grows

}  // namespace

std::u16string buildFrame(std::int16_t sequence, std::int16_t command, const Array& fields,
                          const CodePage& codePage) {
  if (command < 0 || command > 255) throw AutomationError(ErrorNumber::InvalidArgument);
  std::u16string frame;
  frame.reserve(usualFrame);
  frame += {STX, codePage.decode(static_cast<std::uint8_t>(sequence)),
            codePage.decode(static_cast<std::uint8_t>(command))};
  for (const Variant& field : fields.items()) {
    frame += FS;
    const std::size_t before = frame.size();
    frame += field.is(Variant::Kind::Text) ? std::u16string_view(field.text()) : toText(field);
    if (frame.size() == before) frame += DEL;
  }
  frame += ETX;
  frame += lmHexStr::HexStr(CheckSum(frame, codePage), 4);
  return frame;
}

}  // namespace zentaro
