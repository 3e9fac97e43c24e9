// How a broker is named.
#include <charconv>
#include <stdexcept>

#include "base/system/address.h"
#include "base/terminal/language.h"
#include "service/chain/mqtt_link.h"

namespace zentaro::service {

Broker parseBroker(const std::string& option, const std::string& url) {
  constexpr int plainPort = 1883, tlsPort = 8883, lastPort = 65535;
  const auto refuse = [&] {
    throw std::runtime_error(terminal::say(
        "{} {}: se espera mqtts://HOST[:PUERTO], o mqtt:// hacia esta misma máquina",
        "{} {}: mqtts://HOST[:PORT] is expected, or mqtt:// to this very machine", {option, url}));
  };
  Broker broker;
  broker.isTls = url.starts_with("mqtts://");
  if (!broker.isTls && !url.starts_with("mqtt://")) refuse();
  std::string place = url.substr(url.find("//") + 2);
  broker.port = broker.isTls ? tlsPort : plainPort;
  const std::size_t colon = place.rfind(':');
  if (colon != std::string::npos && place.find(']', colon) == std::string::npos) {
    const char* end = place.data() + place.size();
    const auto [last, error] = std::from_chars(place.data() + colon + 1, end, broker.port);
    if (error != std::errc{} || last != end || broker.port < 1 || broker.port > lastPort) refuse();
    place.erase(colon);
  }
  if (place.starts_with('[') && place.ends_with(']')) place = place.substr(1, place.size() - 2);
  if (place.empty() || place.find_first_of("/@?# ") != std::string::npos) refuse();
  broker.host = place;
  if (!broker.isTls && !system::isLocal({broker.host, broker.port})) refuse();
  return broker;
}

}  // namespace zentaro::service
