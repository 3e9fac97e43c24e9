// The type library of the server, made from the class descriptions.
#pragma once

#include "com/system.h"

namespace zentaro::com {

/// Writes the type library for hosts of that width; throws std::system_error with the step that failed.
void makeTypeLibrary(SYSKIND system, const std::wstring& path);

}  // namespace zentaro::com
