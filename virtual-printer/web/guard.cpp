// Checks of request headers.
#include "virtual-printer/web/guard.h"

#include <arpa/inet.h>

#include <array>
#include <string>

namespace printer {
namespace {

std::string_view withoutPort(std::string_view host) {
  if (host.starts_with('[')) return host.substr(1, host.find(']') - 1);
  return host.substr(0, host.find(':'));
}

bool isNumeric(const std::string& host) {
  std::array<unsigned char, sizeof(in6_addr)> parsed{};
  return ::inet_pton(AF_INET, host.c_str(), parsed.data()) == 1 ||
         ::inet_pton(AF_INET6, host.c_str(), parsed.data()) == 1;
}

}  // namespace

bool isOwnHost(std::string_view hostHeader, std::string_view ownHost) {
  const std::string_view host = withoutPort(hostHeader);
  return host == "localhost" || host == ownHost || isNumeric(std::string{host});
}

bool isOwnOrigin(std::string_view originHeader, std::string_view hostHeader) {
  return originHeader.empty() || originHeader == "http://" + std::string{hostHeader};
}

}  // namespace printer
