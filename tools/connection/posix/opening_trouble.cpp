// The errors of POSIX.
#include "tools/connection/opening_trouble.h"

#include <cerrno>

namespace zentaro::tools {

OpeningTrouble troubleOf(int systemError) {
  switch (systemError) {
    case EIO:
    case ENODEV: return OpeningTrouble::NoPort;
    case ENXIO: return OpeningTrouble::UnknownHost;  // of a name on the network; of a device: no port
    case ENOTTY: return OpeningTrouble::NoSerialDevice;
    case EBUSY: return OpeningTrouble::InUse;
    case EACCES:
    case EPERM: return OpeningTrouble::NotAllowed;
    case ECONNREFUSED: return OpeningTrouble::Refused;
    case ETIMEDOUT:
    case EHOSTUNREACH:
    case ENETUNREACH: return OpeningTrouble::Unreachable;
    case EINVAL: return OpeningTrouble::BadName;
    default: return OpeningTrouble::Other;
  }
}

}  // namespace zentaro::tools
