// The services of Windows as one set.
#include "platform/system_host.h"
#include "platform/windows/windows_services.h"

namespace zentaro {

Services systemServices() {
  return {&windows::serialServices(), &windows::registrySettings(), &windows::clock(),       &callbackHost(),
          &windows::files(),          &windows::regionalSettings(), &windows::ansiCodePage()};
}

}  // namespace zentaro
