// The errors of Windows. A port that somebody has is one that access is denied to.
#include "tools/connection/opening_trouble.h"

#include <winsock2.h>

namespace zentaro::tools {

OpeningTrouble troubleOf(int systemError) {
  switch (systemError) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_GEN_FAILURE:
    case ERROR_DEVICE_NOT_CONNECTED: return OpeningTrouble::NoPort;
    case ERROR_INVALID_FUNCTION:
    case ERROR_INVALID_HANDLE: return OpeningTrouble::NoSerialDevice;
    case ERROR_BUSY:
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION: return OpeningTrouble::InUse;
    case WSAECONNREFUSED: return OpeningTrouble::Refused;
    case WSAETIMEDOUT:
    case WSAEHOSTUNREACH:
    case WSAENETUNREACH: return OpeningTrouble::Unreachable;
    case WSAHOST_NOT_FOUND:
    case WSATRY_AGAIN:
    case WSANO_DATA: return OpeningTrouble::UnknownHost;
    case ERROR_INVALID_NAME: return OpeningTrouble::BadName;
    default: return OpeningTrouble::Other;
  }
}

}  // namespace zentaro::tools
