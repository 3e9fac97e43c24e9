// The connection to the broker of a chain, which is mere transport: what is published while there is none is gone, and
// nothing that an earlier connection still held is sent by a later one. It is made again by itself.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/files/json.h"

namespace zentaro::service {

struct Broker {
  std::string host;
  int port = 0;
  bool isTls = false;
  std::string authority, certificate, key;  // files
  int spread = 60;                          // seconds over which tills come back that one outage cut
};

/// Of mqtts://HOST[:PORT], or mqtt:// to this machine. Raises std::runtime_error that names the option.
Broker parseBroker(const std::string& option, const std::string& url);

/// Raises std::runtime_error where the program was built without MQTT.
void demandMqtt();

struct Letter {
  std::string topic, text;
};

class MqttLink {
 public:
  struct Settings {
    Broker broker;
    std::string client;               // no two connections have the same
    std::vector<std::string> topics;  // that are heard
    std::optional<Letter> lastWill;   // told by the broker 30 s after this end is gone, and kept
    std::function<void()> changed;    // a letter came, or the connection
    std::function<void(const std::string&)> say;
    int spread = 0;  // seconds over which a connection that was cut is made again
  };
  /// Raises std::runtime_error without MQTT, and for a file that cannot be used.
  explicit MqttLink(Settings settings);
  MqttLink(const MqttLink&) = delete;
  MqttLink& operator=(const MqttLink&) = delete;
  ~MqttLink();

  /// Which connection it is, from 1 on; 0 while there is none.
  int session() const;
  /// {"connected", "since"} for people and for what watches over the chain.
  Json standing() const;
  /// What came since the last call, in its order.
  std::vector<Letter> take();
  /// Kept: for whoever connects later. `seconds`: the broker throws it away after so long; 0: never.
  void publish(const std::string& topic, const std::string& text);
  void publishKept(const std::string& topic, const std::string& text);
  void publishFor(const std::string& topic, const std::string& text, std::int64_t seconds);
  /// Whether the broker refused the last letter on this topic.
  bool isRefused(const std::string& topic) const;

 private:
  struct Inside;
  std::shared_ptr<Inside> inside_;
};

}  // namespace zentaro::service
