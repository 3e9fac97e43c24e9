// Addresses on the network, as options name them.
#pragma once

#include <string>
#include <string_view>

namespace zentaro::system {

struct Address {
  std::string host = "127.0.0.1";
  int port = 0;  // 0: any that is free
};

/// Reads [ADDRESS:]PORT, with an IPv6 address in brackets. Throws std::runtime_error that says what is expected
/// after the option.
Address parseAddress(std::string_view option, std::string_view text);

/// Whether only programs of this machine reach it.
bool isLocal(const Address& address);

/// The address as it stands in a URL, with its port.
std::string authority(const Address& address);

}  // namespace zentaro::system
