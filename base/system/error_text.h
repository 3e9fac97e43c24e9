// What the system says of a failed call, in the program's language.
#pragma once

#include <string>

namespace zentaro::system {

/// "permiso denegado" in Spanish; in English, and for what is in no table of ours, the system's own words.
std::string errorText(int error);

/// The same for a code of the system itself, which is none of errno's on Windows.
std::string systemErrorText(int code);

}  // namespace zentaro::system
