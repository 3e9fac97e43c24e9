// The service that keeps this machine's books, for whoever finds a port in its hands.
#pragma once

#include <map>
#include <optional>
#include <string>

namespace zentaro::tools {

struct ServiceHere {
  std::string url;                              // empty without HTTP
  std::map<std::string, std::string> printers;  // devices by name, as they were given
};

/// Nothing while none keeps these books, or they cannot be read.
std::optional<ServiceHere> serviceHere(const std::string& books);

/// What the service calls the printer on this device; empty when it has none there.
std::string nameOn(const ServiceHere& service, const std::string& device);

/// What to do instead of using the port.
std::string sendToService(const ServiceHere& service, const std::string& printer);

}  // namespace zentaro::tools
