// Reading and writing of addresses.
#include "base/system/address.h"

#include <charconv>
#include <stdexcept>

#include "base/terminal/language.h"

namespace zentaro::system {
namespace {

using terminal::say;

constexpr int largestPort = 65535;

[[noreturn]] void fail(std::string_view option, std::string_view text) {
  throw std::runtime_error(
      say("{} {}: se espera un puerto de 0 a 65535, o dirección y puerto, como 8210, "
          "0.0.0.0:8210 o [::1]:8210",
          "{} {}: a port from 0 to 65535 is expected, or an address and a port, such as "
          "8210, 0.0.0.0:8210 or [::1]:8210",
          {option, text}));
}

}  // namespace

Address parseAddress(std::string_view option, std::string_view text) {
  Address address;
  const std::size_t colon = text.rfind(':');
  const std::string_view port = colon == std::string_view::npos ? text : text.substr(colon + 1);
  const auto [end, error] = std::from_chars(port.data(), port.data() + port.size(), address.port);
  if (error != std::errc{} || end != port.data() + port.size()) fail(option, text);
  if (address.port < 0 || address.port > largestPort) fail(option, text);
  if (colon == std::string_view::npos) return address;
  std::string_view host = text.substr(0, colon);
  const bool isBracketed = host.starts_with('[') && host.ends_with(']');
  if (isBracketed) host = host.substr(1, host.size() - 2);
  if (host.empty() || (!isBracketed && host.find(':') != std::string_view::npos)) fail(option, text);
  address.host = host;
  return address;
}

bool isLocal(const Address& address) {
  return address.host.starts_with("127.") || address.host == "localhost" || address.host == "::1";
}

std::string authority(const Address& address) {
  const bool needsBrackets = address.host.find(':') != std::string::npos;
  const std::string host = needsBrackets ? "[" + address.host + "]" : address.host;
  return host + ":" + std::to_string(address.port);
}

}  // namespace zentaro::system
