// The manifest of the server, by which a program uses it without registration.
#pragma once

#include <string>

namespace zentaro::com {

/// To lie as Zentaro.manifest beside the DLL, for programs whose own manifest depends on the assembly "Zentaro".
std::string serverManifest(const std::string& processor);

}  // namespace zentaro::com
