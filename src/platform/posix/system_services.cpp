// The services of a POSIX system as one set.
#include "platform/posix/posix_services.h"
#include "platform/system_host.h"
#include "platform/tcp_serial.h"

namespace zentaro {

Services systemServices() {
  static TcpSerial& serial = *new TcpSerial(posix::serialServices());  // lasts as those below do
  return {&serial,         &posix::settingsFiles(),    &posix::clock(), &callbackHost(),
          &posix::files(), &posix::regionalSettings(), &windows1252()};
}

}  // namespace zentaro
