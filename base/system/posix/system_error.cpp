// The system's codes are those of errno.
#include "base/system/error_text.h"

namespace zentaro::system {

std::string systemErrorText(int code) { return errorText(code); }

}  // namespace zentaro::system
