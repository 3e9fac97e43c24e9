// MQTT 5 by libmosquitto, on a thread of its own.
#include "service/chain/mqtt_link.h"

#include <mosquitto.h>
#include <mqtt_protocol.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <ctime>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <utility>

#include "base/files/json.h"
#include "base/system/error_text.h"
#include "base/terminal/language.h"
#include "service/chain/rules.h"
#include "till/words/job_words.h"

namespace zentaro::service {

using terminal::say;

namespace {

// Of the codes of MQTT 5 those from here on are refusals.
constexpr int firstRefusal = 128;
constexpr int willDelay = 30;  // seconds

// The failures that people meet; of the others only the library knows a word.
constexpr std::array<std::pair<int, std::string_view>, 12> troubles{{
    {MOSQ_ERR_PROTOCOL, "lo que responde no es MQTT 5"},
    {MOSQ_ERR_NO_CONN, "no hay conexión"},
    {MOSQ_ERR_CONN_LOST, "se perdió la conexión"},
    {MOSQ_ERR_TLS, "TLS: no valen el certificado, la clave o la CA"},
    {MOSQ_ERR_EAI, "no se conoce el nombre del broker"},
    {MOSQ_ERR_KEEPALIVE, "el broker no responde"},
    {MQTT_RC_UNSPECIFIED, "rechazado"},
    {MQTT_RC_CLIENTID_NOT_VALID, "el broker no admite ese nombre"},
    {MQTT_RC_NOT_AUTHORIZED, "el broker no lo permite (su ACL)"},
    {MQTT_RC_SERVER_UNAVAILABLE, "el broker no está disponible"},
    {MQTT_RC_SERVER_BUSY, "el broker está ocupado"},
    {MQTT_RC_QUOTA_EXCEEDED, "el broker ya no admite más"},
}};

std::string troubleText(int code) {
  if (code == MOSQ_ERR_ERRNO) return system::errorText(errno);
  const auto* const found = std::ranges::find(troubles, code, &std::pair<int, std::string_view>::first);
  const std::string english = code >= firstRefusal ? mosquitto_reason_string(code) : mosquitto_strerror(code);
  return say(found == troubles.end() ? english : found->second, english);
}

struct Properties {
  Properties() = default;
  Properties(const Properties&) = delete;
  Properties& operator=(const Properties&) = delete;
  ~Properties() { mosquitto_property_free_all(&list); }
  mosquitto_property* list = nullptr;
};

}  // namespace

struct MqttLink::Inside {
  explicit Inside(Settings given) : settings{std::move(given)} {
    mosquitto_lib_init();
    const Handle first = make();  // raises for files that cannot be used
  }

  struct Closer {
    void operator()(mosquitto* made) const { mosquitto_destroy(made); }
  };
  using Handle = std::unique_ptr<mosquitto, Closer>;

  Handle make() {
    Handle made{mosquitto_new(settings.client.c_str(), true, this)};
    if (!made) throw std::runtime_error("libmosquitto");
    mosquitto_threaded_set(made.get(), true);
    mosquitto_int_option(made.get(), MOSQ_OPT_PROTOCOL_VERSION, MQTT_PROTOCOL_V5);
    mosquitto_int_option(made.get(), MOSQ_OPT_TCP_NODELAY, 1);
    secure(made.get());
    if (settings.lastWill) {
      Properties properties;
      mosquitto_property_add_int32(&properties.list, MQTT_PROP_WILL_DELAY_INTERVAL, willDelay);
      const auto& [topic, text] = *settings.lastWill;
      if (mosquitto_will_set_v5(made.get(), topic.c_str(), static_cast<int>(text.size()), text.data(), 1,
                                true, properties.list) == MOSQ_ERR_SUCCESS)
        properties.list = nullptr;  // the handle has them now
    }
    mosquitto_connect_v5_callback_set(made.get(),
                                      [](mosquitto*, void* self, int code, int, const mosquitto_property*) {
                                        static_cast<Inside*>(self)->connected(code);
                                      });
    mosquitto_disconnect_v5_callback_set(made.get(),
                                         [](mosquitto*, void* self, int code, const mosquitto_property*) {
                                           static_cast<Inside*>(self)->cut(code);
                                         });
    mosquitto_subscribe_v5_callback_set(made.get(), [](mosquitto*, void* self, int, int count,
                                                       const int* granted, const mosquitto_property*) {
      static_cast<Inside*>(self)->subscribed({granted, granted + count});
    });
    mosquitto_publish_v5_callback_set(
        made.get(), [](mosquitto*, void* self, int number, int code, const mosquitto_property*) {
          static_cast<Inside*>(self)->published(number, code);
        });
    mosquitto_message_v5_callback_set(
        made.get(), [](mosquitto*, void* self, const mosquitto_message* message, const mosquitto_property*) {
          static_cast<Inside*>(self)->came(*message);
        });
    return made;
  }

  void secure(mosquitto* made) const {
    const Broker& broker = settings.broker;
    if (!broker.isTls) return;
    const auto orNull = [](const std::string& file) { return file.empty() ? nullptr : file.c_str(); };
    const int code = mosquitto_tls_set(made, orNull(broker.authority), nullptr, orNull(broker.certificate),
                                       orNull(broker.key), nullptr);
    if (code != MOSQ_ERR_SUCCESS)
      throw std::runtime_error(say("TLS: no se pueden usar {}, {} y {} ({})",
                                   "TLS: {}, {} and {} cannot be used ({})",
                                   {broker.authority, broker.certificate, broker.key, troubleText(code)}));
  }

  // --- On the thread ---

  void run() {
    for (int span = 0; !isEnding;) {
      const int before = sessions;
      try {
        connectOnce();
      } catch (const std::exception& error) {  // a certificate that was taken away meanwhile
        tell(error.what());
      }
      span = spanOfReturn(span, sessions != before, settings.spread);
      pause(span);
    }
    const std::lock_guard lock{mutex};
    isOver = true;
    ended.notify_all();
  }

  void connectOnce() {
    Handle made = make();  // the library's own locks are never taken inside ours: its callbacks take ours
    {
      const std::lock_guard lock{mutex};
      handle = std::move(made);
      awaited.clear();
      refused.clear();
    }
    constexpr int keepAlive = 15, turn = 1000;
    Properties properties;
    // Required for the delay of the last will: it is sent at once where no session is left to wait with.
    mosquitto_property_add_int32(&properties.list, MQTT_PROP_SESSION_EXPIRY_INTERVAL, willDelay);
    int code = mosquitto_connect_bind_v5(handle.get(), settings.broker.host.c_str(), settings.broker.port,
                                         keepAlive, nullptr, properties.list);
    if (code != MOSQ_ERR_SUCCESS) tell(troubleText(code));
    while (code == MOSQ_ERR_SUCCESS && !isEnding) code = mosquitto_loop(handle.get(), turn, 1);
    if (code == MOSQ_ERR_SUCCESS) farewell();
    gone();
  }

  // What was published last is still on its way.
  void farewell() {
    for (int tries = 0; tries < 20; ++tries) {
      if (mosquitto_loop(handle.get(), 100, 1) != MOSQ_ERR_SUCCESS) return;
      const std::lock_guard lock{mutex};
      if (awaited.empty()) break;
    }
    mosquitto_disconnect_v5(handle.get(), 0, nullptr);
    mosquitto_loop(handle.get(), 100, 1);
  }

  void pause(int span) {
    std::uniform_int_distribution<int> milliseconds{std::min(1000, span * 1000), span * 1000};
    std::unique_lock lock{mutex};
    ended.wait_for(lock, std::chrono::milliseconds{milliseconds(dice)}, [this] { return isEnding.load(); });
  }

  void gone() {
    Handle last;
    {
      const std::lock_guard lock{mutex};
      if (std::exchange(session, 0) != 0) since = std::time(nullptr);
      last = std::move(handle);
    }
    changed();
  }

  void connected(int code) {
    if (code != 0) return tell(troubleText(code));
    for (const std::string& topic : settings.topics)
      mosquitto_subscribe_v5(handle.get(), nullptr, topic.c_str(), 1, 0, nullptr);
    toSubscribe = settings.topics.size();
  }

  void subscribed(const std::vector<int>& granted) {
    for (const int code : granted)
      if (code >= firstRefusal)
        return tell(say("suscripción rechazada: {}", "subscription refused: {}", {troubleText(code)}));
    if (--toSubscribe > 0) return;
    said.clear();
    {
      const std::lock_guard lock{mutex};
      session = ++sessions;
      since = std::time(nullptr);
    }
    settings.say(say("cadena: conectado", "chain: connected"));
    changed();
  }

  void published(int number, int code) {
    std::string topic;
    {
      const std::lock_guard lock{mutex};
      if (const auto node = awaited.extract(number)) topic = node.mapped();
      if (code >= firstRefusal)
        refused.insert(topic);
      else if (refused.erase(topic) == 0)
        return;
    }
    if (code >= firstRefusal) tell(topic + ": " + troubleText(code));
    changed();
  }

  void came(const mosquitto_message& message) {
    {
      const std::lock_guard lock{mutex};
      letters.push_back(
          {message.topic,
           {static_cast<const char*>(message.payload), static_cast<std::size_t>(message.payloadlen)}});
    }
    changed();
  }

  void cut(int code) {
    if (code == MQTT_RC_SESSION_TAKEN_OVER)
      tell(say("otro programa se conectó con el mismo nombre ({}): dos cajas con un certificado",
               "another program connected under the same name ({}): two tills with one certificate",
               {settings.client}));
    else if (code != 0)
      tell(troubleText(code));
  }

  // Whoever made the link may be gone while it ends.
  void changed() const {
    if (!isEnding) settings.changed();
  }

  // The same trouble is said once.
  void tell(const std::string& text) {
    if (text == said || isEnding) return;
    said = text;
    settings.say(say("cadena: {}", "chain: {}", {text}));
  }

  void publish(const std::string& topic, const std::string& text, bool isKept, std::int64_t seconds) {
    const std::lock_guard lock{mutex};
    if (session == 0) return;
    Properties properties;
    if (seconds > 0)
      mosquitto_property_add_int32(&properties.list, MQTT_PROP_MESSAGE_EXPIRY_INTERVAL,
                                   static_cast<std::uint32_t>(seconds));
    int number = 0;
    if (mosquitto_publish_v5(handle.get(), &number, topic.c_str(), static_cast<int>(text.size()), text.data(),
                             1, isKept, properties.list) == MOSQ_ERR_SUCCESS)
      awaited[number] = topic;
  }

  Settings settings;
  mutable std::mutex mutex;
  std::condition_variable ended;
  std::atomic<bool> isEnding{false};
  bool isOver = false;
  Handle handle;
  int session = 0, sessions = 0;
  std::time_t since = std::time(nullptr);
  std::size_t toSubscribe = 0;
  std::map<int, std::string> awaited;  // the topics of what the broker has not acknowledged
  std::set<std::string> refused;
  std::vector<Letter> letters;
  std::string said;
  std::mt19937 dice{std::random_device{}()};
  std::thread thread;
};

void demandMqtt() {}

MqttLink::MqttLink(Settings settings) : inside_{std::make_shared<Inside>(std::move(settings))} {
  inside_->thread = std::thread{[inside = inside_] { inside->run(); }};
}

// A name that is looked up, or a connection whose packets are dropped, cannot be called off: two minutes at the worst.
// Nothing is lost with it, so the end does not wait for it.
MqttLink::~MqttLink() {
  std::unique_lock lock{inside_->mutex};
  inside_->isEnding = true;
  inside_->ended.notify_all();
  const bool isOver =
      inside_->ended.wait_for(lock, std::chrono::seconds{5}, [this] { return inside_->isOver; });
  lock.unlock();
  isOver ? inside_->thread.join() : inside_->thread.detach();
}

int MqttLink::session() const {
  const std::lock_guard lock{inside_->mutex};
  return inside_->session;
}

Json MqttLink::standing() const {
  const std::lock_guard lock{inside_->mutex};
  return {{"connected", inside_->session != 0}, {"since", till::momentJson(inside_->since)}};
}

std::vector<Letter> MqttLink::take() {
  const std::lock_guard lock{inside_->mutex};
  return std::exchange(inside_->letters, {});
}

void MqttLink::publish(const std::string& topic, const std::string& text) {
  inside_->publish(topic, text, false, 0);
}

void MqttLink::publishKept(const std::string& topic, const std::string& text) {
  inside_->publish(topic, text, true, 0);
}

void MqttLink::publishFor(const std::string& topic, const std::string& text, std::int64_t seconds) {
  inside_->publish(topic, text, false, seconds);
}

bool MqttLink::isRefused(const std::string& topic) const {
  const std::lock_guard lock{inside_->mutex};
  return inside_->refused.contains(topic);
}

}  // namespace zentaro::service
