// Nobody may print again what could have been printed.
#include "tools/sale/exit_status.h"

#include "tools/show/guarded.h"

namespace zentaro::tools {

using till::Cause;
using till::Ending;

namespace {

constexpr int exitNotPrinted = 3, exitUnknown = 4, exitOpenBefore = 5, exitPrintedBefore = 6;

int statusOf(Ending ending) {
  switch (ending) {
    case Ending::Printed:
    case Ending::PrintedInPart:
    case Ending::AlreadyPrinted: return exitDone;
    case Ending::OtherContent: return exitFailed;
    case Ending::NotPrinted:
    case Ending::Unreachable:
    case Ending::Busy: return exitNotPrinted;
    case Ending::OpenBefore: return exitOpenBefore;
    case Ending::PrintedBefore: return exitPrintedBefore;
    case Ending::Unknown:
    case Ending::UnknownBefore:
    case Ending::StillOpen:
    case Ending::StillToBeClosed: break;
  }
  return exitUnknown;
}

}  // namespace

int exitStatus(const till::Verdict& verdict) {
  const bool wasTried = verdict.wasOpened || verdict.cause.kind != Cause::Kind::Books;
  return wasTried ? statusOf(verdict.ending) : exitFailed;
}

int exitStatus(const till::ClosingVerdict& verdict) {
  if (verdict.ending == Ending::Unreachable || verdict.cause.kind == Cause::Kind::Books) return exitFailed;
  const bool isRefused = verdict.ending == Ending::NotPrinted && verdict.cause.kind == Cause::Kind::Refused;
  const bool isX = verdict.kind == till::Kind::X;
  if (isRefused || (isX && verdict.ending == Ending::Unknown)) return exitRefused;
  if (verdict.ending == Ending::PrintedBefore) return exitDone;  // the day that was meant is closed
  return verdict.ending == Ending::UnknownBefore ? exitNotPrinted : statusOf(verdict.ending);
}

}  // namespace zentaro::tools
