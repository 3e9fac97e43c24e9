// The services of the system as one set, and the set in force on the calling thread.
#pragma once

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/host.h"
#include "platform/regional_settings.h"
#include "platform/serial_services.h"
#include "platform/settings_store.h"
#include "text/code_page.h"
#include "zentaro_api.h"

namespace zentaro {

struct Services {
  SerialServices* serial;
  SettingsStore* settings;
  Clock* clock;
  Host* host;
  Files* files;
  RegionalSettings* regional;
  const CodePage* codePage;
};

/// The system's own services; they live as long as the program.
Services systemServices();

/// The services in force on the calling thread: the system's, unless a ServicesScope is alive.
ZENTARO_API const Services& services();

/// Puts other services in force on the calling thread for its lifetime. The services must outlive it.
class ZENTARO_API ServicesScope {
 public:
  explicit ServicesScope(const Services& others);
  ~ServicesScope();
  ServicesScope(const ServicesScope&) = delete;
  ServicesScope& operator=(const ServicesScope&) = delete;

 private:
  Services previous_;
};

}  // namespace zentaro
