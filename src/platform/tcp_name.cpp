// Reads names of lines over TCP.
#include "platform/tcp_name.h"

#include <charconv>

namespace zentaro {
namespace {

constexpr std::string_view scheme = "tcp://";

bool isPort(std::string_view text) {
  unsigned number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc{} && stop == end && number >= 1 && number <= 65535;
}

}  // namespace

bool isTcpName(std::string_view device) { return device.starts_with(scheme); }

std::optional<TcpName> parseTcpName(std::string_view device) {
  if (!isTcpName(device)) return std::nullopt;
  device.remove_prefix(scheme.size());
  const std::size_t colon = device.rfind(':');
  if (colon == device.npos || !isPort(device.substr(colon + 1))) return std::nullopt;
  std::string_view host = device.substr(0, colon);
  const bool hasBrackets = host.starts_with('[') && host.ends_with(']');  // around an IPv6 address
  if (hasBrackets) host = host.substr(1, host.size() - 2);
  if (host.empty() || (!hasBrackets && host.find(':') != host.npos) || host.find('/') != host.npos)
    return std::nullopt;
  return TcpName{std::string(host), std::string(device.substr(colon + 1))};
}

}  // namespace zentaro
