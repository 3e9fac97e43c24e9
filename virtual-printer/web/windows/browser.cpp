// The program that the user has chosen for pages.
#include "virtual-printer/web/browser.h"

#include "base/terminal/windows/shell.h"

namespace virtual_printer {

void openInBrowser(const std::string& url) {
  ::ShellExecuteA(nullptr, "open", url.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

}  // namespace virtual_printer
