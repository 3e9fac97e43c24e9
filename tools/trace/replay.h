// A scripted printer on a pseudo-terminal.
#pragma once

#include "tools/trace/script.h"

namespace zentaro::tools {

/// Names its device in one line on standard output, then answers until the process is ended. What a host
/// sends, and how the script goes, is told on standard error. Throws std::system_error when there is no
/// pseudo-terminal.
[[noreturn]] void replay(Script script);

}  // namespace zentaro::tools
