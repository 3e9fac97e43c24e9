// The services of a POSIX system as one set.
#include "platform/posix/posix_services.h"
#include "platform/system_host.h"

namespace zentaro {

Services systemServices() {
  return {&posix::serialServices(), &posix::settingsFiles(),    &posix::clock(), &callbackHost(),
          &posix::files(),          &posix::regionalSettings(), &windows1252()};
}

}  // namespace zentaro
