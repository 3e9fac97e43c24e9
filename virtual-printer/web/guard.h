// Who may ask: pages of other sites, and names that were pointed to this machine, may not.
#pragma once

#include <string_view>

namespace printer {

/// Whether a request's Host header names this machine. A foreign name may have been pointed to our address by
/// whoever owns it, so only numbers, "localhost" and the host that the page was told to listen on are taken.
/// The port is the user's affair: it may be forwarded.
bool isOwnHost(std::string_view hostHeader, std::string_view ownHost);

/// Whether the Origin header, where there is one, is the page itself.
bool isOwnOrigin(std::string_view originHeader, std::string_view hostHeader);

}  // namespace printer
