// What becomes of a queued job behind an attempt to print it: whether it has its end, or waits on.
#pragma once

#include "till/course/verdict.h"

namespace zentaro::service {

enum class Aftermath {
  Ended,       // the books have its end
  NotPrinted,  // it was begun, nothing was opened, and nobody knows why: it is not begun again
  Waits        // nothing was opened, and it may be tried again
};

/// `isBegun`: the books say that it prints. Required: once a document may have been opened, nothing is tried again.
Aftermath aftermathOf(till::Ending ending, till::Cause::Kind cause, bool wasOpened, bool isBegun);

}  // namespace zentaro::service
