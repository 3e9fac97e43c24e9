// UTF-8 and the system's wide texts.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace zentaro::terminal {

inline std::wstring wide(std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring made(
      static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, text.data(), size, made.data(), static_cast<int>(made.size()));
  return made;
}

inline std::string narrow(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  const int needed = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string made(static_cast<std::size_t>(needed), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, text.data(), size, made.data(), needed, nullptr, nullptr);
  return made;
}

/// The system's words for its last error, or for this one, without the line end.
inline std::string reasonOf(DWORD error = ::GetLastError()) {
  wchar_t text[256];
  const DWORD length = ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        error, 0, text, static_cast<DWORD>(std::size(text)), nullptr);
  std::string reason = narrow({text, length});
  while (!reason.empty() && (reason.back() == '\n' || reason.back() == '\r' || reason.back() == ' '))
    reason.pop_back();
  return reason.empty() ? "error " + std::to_string(error) : reason;
}

}  // namespace zentaro::terminal
