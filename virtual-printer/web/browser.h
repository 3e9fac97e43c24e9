// Opening the page in the user's browser.
#pragma once

#include <string>

namespace virtual_printer {

/// Does nothing where there is no desktop or no program that opens pages.
void openInBrowser(const std::string& url);

}  // namespace virtual_printer
