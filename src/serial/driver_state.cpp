// What a thread leaves open is closed when it ends.
#include "serial/driver_state.h"

#include "platform/per_thread.h"
#include "platform/services.h"

namespace zentaro::modCOMM {

DriverState::~DriverState() {
  // Only the system's own services outlive every thread.
  SerialServices* const system = systemServices().serial;
  for (const PortEntry& port : ports) {
    if (port.open && port.services == system) system->CloseHandle(port.handle);
  }
}

DriverState& driverState() { return perThread<DriverState>(); }

}  // namespace zentaro::modCOMM
