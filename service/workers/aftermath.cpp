// The rule of waiting on.
#include "service/workers/aftermath.h"

namespace zentaro::service {

using till::Cause;
using till::Ending;

Aftermath aftermathOf(Ending ending, Cause::Kind cause, bool wasOpened, bool isBegun) {
  switch (ending) {
    case Ending::OpenBefore:
    case Ending::Unreachable:
    case Ending::Busy: return Aftermath::Waits;
    case Ending::NotPrinted: break;
    default: return Aftermath::Ended;
  }
  if (wasOpened) return Aftermath::Ended;
  if (!isBegun) return Aftermath::Waits;
  // An opening whose answer was lost may still arrive.
  return cause == Cause::Kind::Lost ? Aftermath::NotPrinted : Aftermath::Waits;
}

}  // namespace zentaro::service
