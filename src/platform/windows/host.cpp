// The host of Windows: its thread's message queue, and the system's message box.
#include <objbase.h>

#include "platform/system_host.h"
#include "platform/windows/system.h"

namespace zentaro {
namespace {

/// Messages of one yield: a window that posts to itself must not keep the library from ever coming back.
constexpr int mostMessages = 1000;

/// Where calls from other threads, and events of a script, arrive as messages.
bool isSingleThreadedApartment() {
  APTTYPE type{};
  APTTYPEQUALIFIER qualifier{};
  const HRESULT result = ::CoGetApartmentType(&type, &qualifier);
  return SUCCEEDED(result) && (type == APTTYPE_STA || type == APTTYPE_MAINSTA);
}

BOOL CALLBACK stopAtFirst(HWND, LPARAM found) {
  *reinterpret_cast<bool*>(found) = true;
  return FALSE;
}

bool ownsWindow() {
  bool found = false;
  ::EnumThreadWindows(::GetCurrentThreadId(), stopAtFirst, reinterpret_cast<LPARAM>(&found));
  return found;
}

/// False for a service: a box that nobody can close would stop it for ever.
bool hasDesktop() {
  USEROBJECTFLAGS flags{};
  return ::GetUserObjectInformationW(::GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags, nullptr) !=
             0 &&
         (flags.dwFlags & WSF_VISIBLE) != 0;
}

}  // namespace

void yieldToSystem() {
  MSG message;
  for (int count = 0; count < mostMessages && ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0;
       ++count) {
    if (message.message == WM_QUIT) {  // meant for the program's own loop
      ::PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
}

bool systemWantsYields() { return isSingleThreadedApartment() || ownsWindow(); }

void systemErrorBox(std::u16string_view title, std::u16string_view text) {
  constexpr UINT style = MB_OK | MB_ICONERROR | MB_SETFOREGROUND;
  const bool isShown = hasDesktop() && ::MessageBoxW(::GetActiveWindow(), windows::wide(text).c_str(),
                                                     windows::wide(title).c_str(), style) != 0;
  if (!isShown) printErrorBox(title, text);
}

}  // namespace zentaro
