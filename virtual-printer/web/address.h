// Where the page is served: what stands behind --web.
#pragma once

#include <string>
#include <string_view>

namespace printer {

struct WebAddress {
  std::string host = "127.0.0.1";
  int port = 8210;  // 0: any that is free
};

// Reads [ADDRESS:]PORT, with an IPv6 address in brackets; nothing is the standard address. Throws
// std::runtime_error that says what is expected.
WebAddress parseWebAddress(std::string_view text);

// The address as it stands in a URL, with its port.
std::string authority(const WebAddress& address);

}  // namespace printer
