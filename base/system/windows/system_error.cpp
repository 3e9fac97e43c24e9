// Windows has the words for its codes, in its own language.
#include "base/system/error_text.h"
#include "base/terminal/windows/text.h"

namespace zentaro::system {

std::string systemErrorText(int code) { return terminal::reasonOf(static_cast<DWORD>(code)); }

}  // namespace zentaro::system
