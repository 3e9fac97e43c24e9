// Waiting for an answer.
#include "printer/transaction.h"

#include <chrono>
#include <cmath>
#include <utility>

#include "automation/conversions.h"
#include "platform/services.h"
#include "serial/modCOMM.h"

namespace zentaro {

namespace {

using Seconds = std::chrono::duration<double>;

Seconds now() { return Seconds(services().clock->secondsSinceMidnight()); }

/// required: a whole number of seconds, rounded as the automation platform rounds when a time is kept
/// as a whole number: a tie goes to the even one, so a time-out may be half a second longer or shorter.
Seconds newDeadline(CachedSettings& settings) {
  return Seconds(std::nearbyint((now() + std::chrono::seconds(settings.timeOut())).count()));
}

/// One look at the port, after a sleep that ends with the next byte or the deadline: true when a chunk came.
bool readChunk(const Variant& commPort, Receiver& receiver, Seconds deadline) {
  constexpr std::int32_t largestChunk = 4096;
  const std::int16_t port = toInt16(commPort);
  const Seconds left = deadline - now();
  if (left > Seconds::zero()) modCOMM::CommWait(port, std::chrono::ceil<std::chrono::milliseconds>(left));
  std::u16string chunk;
  if (modCOMM::CommRead(port, chunk, largestChunk) < 1) return false;
  receiver.feed(std::move(chunk));
  return true;
}

}  // namespace

bool receiveAnswer(const Variant& commPort, CachedSettings& settings, Receiver& receiver) {
  Seconds deadline = newDeadline(settings);
  // The wait for the first useful byte: any chunk moves the deadline, also one of wait bytes only.
  while (!receiver.started() && now() < deadline) {
    if (readChunk(commPort, receiver, deadline)) deadline = newDeadline(settings);
  }
  while (receiver.started() && !receiver.complete() && now() < deadline) {
    if (readChunk(commPort, receiver, deadline)) deadline = newDeadline(settings);
    // required: once the ETX is there, the chunks of the checksum do not move the deadline.
    while (receiver.hasEtx() && !receiver.complete() && now() < deadline) {
      readChunk(commPort, receiver, deadline);
    }
  }
  return receiver.complete();
}

}  // namespace zentaro
