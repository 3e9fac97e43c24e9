// A text is cut or padded at its end.
#include "util/lm_string_lib.h"

#include "automation/automation_error.h"

namespace zentaro::lmStringLib {

std::u16string FixLen(std::u16string text, std::int32_t length) {
  if (length < 0) throw AutomationError(ErrorNumber::InvalidArgument);
  text.resize(static_cast<std::size_t>(length), u' ');
  return text;
}

}  // namespace zentaro::lmStringLib
