// Checks of request headers.
#include "base/http/guard.h"

#include <algorithm>
#include <cctype>

namespace zentaro::http {
namespace {

std::string lowered(std::string_view text) {
  std::string result{text};
  for (char& character : result)
    character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
  return result;
}

std::string withoutPort(std::string_view host) {
  if (host.starts_with('[')) return lowered(host.substr(0, host.find(']') + 1));
  return lowered(host.substr(0, host.find(':')));
}

// No name that somebody can own looks like these: the last label of a name on the internet is never a number.
bool isNumeric(const std::string& host) {
  if (host.starts_with('[')) return host.find_first_not_of("[]0123456789abcdef:.") == std::string::npos;
  return !host.empty() && host.find_first_not_of("0123456789.") == std::string::npos;
}

}  // namespace

bool Guard::knowsHost(std::string_view hostHeader) const {
  const std::string host = withoutPort(hostHeader);
  if (host == "localhost" || isNumeric(host)) return true;
  return std::any_of(hosts.begin(), hosts.end(),
                     [&](const std::string& name) { return lowered(name) == host; });
}

bool Guard::letsAsk(std::string_view originHeader, std::string_view hostHeader) const {
  if (originHeader.empty()) return true;
  // Behind a proxy with TLS the page's own origin begins with https.
  const std::string host{hostHeader};
  if (originHeader == "http://" + host || originHeader == "https://" + host) return true;
  return std::find(origins.begin(), origins.end(), originHeader) != origins.end();
}

}  // namespace zentaro::http
