// The services of Windows as one set.
#include "platform/system_host.h"
#include "platform/tcp_serial.h"
#include "platform/windows/windows_services.h"

namespace zentaro {

Services systemServices() {
  static TcpSerial& serial = *new TcpSerial(windows::serialServices());  // lasts as those below do
  return {&serial,           &windows::registrySettings(), &windows::clock(),       &callbackHost(),
          &windows::files(), &windows::regionalSettings(), &windows::ansiCodePage()};
}

}  // namespace zentaro
