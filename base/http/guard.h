// Who may ask: pages of other sites, and names that were pointed to this machine, may not.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zentaro::http {

struct Guard {
  std::vector<std::string> hosts;    // further names that Host may have
  std::vector<std::string> origins;  // further pages that may ask, exactly as a browser writes them

  /// Whether a request's Host header names this machine. A foreign name may have been pointed to our address by
  /// whoever owns it, so only numbers, "localhost" and the names given are taken. The port is the user's affair: it
  /// may be forwarded.
  bool knowsHost(std::string_view hostHeader) const;
  /// Whether the Origin header, where there is one, is the page itself or one of the given.
  bool letsAsk(std::string_view originHeader, std::string_view hostHeader) const;
};

}  // namespace zentaro::http
