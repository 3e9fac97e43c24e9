// Waits for the answer to a frame: the one place where driver, clock and receiver meet.
#pragma once

#include "automation/variant.h"
#include "printer/cached_settings.h"
#include "printer/receiver.h"

namespace zentaro {

/// Reads until an answer is complete or a time-out of silence is over; true when it is complete.
/// `receiver` keeps what came. Sleeps in the driver while nothing arrives; each read lets the host
/// process its events, and what the host raises passes.
bool receiveAnswer(const Variant& commPort, CachedSettings& settings, Receiver& receiver);

}  // namespace zentaro
