// The services of a POSIX system as one set.
#include "platform/posix/posix_services.h"

namespace zentaro {

Services systemServices() {
  return {&posix::serialServices(), &posix::settingsFile(),     &posix::clock(), &posix::host(),
          &posix::files(),          &posix::regionalSettings(), &windows1252()};
}

}  // namespace zentaro
