// The system's own declarations, and its wide texts.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace zentaro::windows {

// The system's wide characters are UTF-16.
static_assert(sizeof(wchar_t) == sizeof(char16_t));

inline std::wstring wide(std::u16string_view text) { return {text.begin(), text.end()}; }
inline std::u16string narrow(std::wstring_view text) { return {text.begin(), text.end()}; }

}  // namespace zentaro::windows
