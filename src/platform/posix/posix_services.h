// The POSIX implementation of each platform service: one object a service, made at its first use,
// living as long as the program.
#pragma once

#include "platform/services.h"

namespace zentaro::posix {

/// The program's one T. It is never destroyed: the destructor of a global printer object may be the
/// last to need it.
template <class T>
T& lasting() {
  static T& object = *new T;
  return object;
}

SerialServices& serialServices();
SettingsStore& settingsFile();
Clock& clock();
Host& host();
Files& files();
RegionalSettings& regionalSettings();

}  // namespace zentaro::posix
