// Where the program is built without MQTT.
#include <stdexcept>

#include "base/terminal/language.h"
#include "service/chain/mqtt_link.h"

namespace zentaro::service {

struct MqttLink::Inside {};

void demandMqtt() {
  throw std::runtime_error(
      terminal::say("--centre y --tills son para Linux, con MQTT: este zentaro se construyó sin él",
                    "--centre and --tills are for Linux, with MQTT: this zentaro was built without it"));
}

// Where there is MQTT, they are kept.
MqttLink::MqttLink(Settings) { demandMqtt(); }  // NOLINT(performance-unnecessary-value-param)
MqttLink::~MqttLink() = default;
int MqttLink::session() const { return 0; }
Json MqttLink::standing() const { return {}; }
std::vector<Letter> MqttLink::take() { return {}; }
void MqttLink::publish(const std::string&, const std::string&) {}
void MqttLink::publishKept(const std::string&, const std::string&) {}
void MqttLink::publishFor(const std::string&, const std::string&, std::int64_t) {}
bool MqttLink::isRefused(const std::string&) const { return false; }

}  // namespace zentaro::service
