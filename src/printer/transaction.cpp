// A loop of looks at the port, each of which sleeps until a byte comes or the deadline is over.
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
  return Seconds(std::nearbyint((now() + std::chrono::seconds(settings.TimeOut())).count()));
}

/// One look at the port: true when a chunk came.
bool readChunk(std::int16_t port, Receiver& receiver) {
  constexpr std::int32_t largestChunk = 4096;
  std::u16string chunk;
  if (modCOMM::CommRead(port, chunk, largestChunk) < 1) return false;
  receiver.feed(std::move(chunk));
  return true;
}

enum class Awaiting { FirstByte, Answer, Checksum };

/// Each look goes on by one step, so that behind a first chunk that holds the ETX there is still one
/// look for the answer. An STX behind a junk ETX leads back from the checksum.
Awaiting next(Awaiting now, const Receiver& receiver) {
  if (!receiver.started()) return Awaiting::FirstByte;
  return now == Awaiting::FirstByte || !receiver.hasEtx() ? Awaiting::Answer : Awaiting::Checksum;
}

}  // namespace

bool receiveAnswer(const Variant& commPort, CachedSettings& settings, Receiver& receiver) {
  Seconds deadline = newDeadline(settings);
  Awaiting awaiting = Awaiting::FirstByte;
  for (Seconds left; !receiver.complete() && (left = deadline - now()) > Seconds::zero();
       awaiting = next(awaiting, receiver)) {
    const std::int16_t port = toInt16(commPort);
    // required: no wait in front of a look for the answer when the ETX is there, else what comes during the
    // wait would move the deadline.
    const bool isAtOnce = awaiting == Awaiting::Answer && receiver.hasEtx();
    if (!isAtOnce) modCOMM::CommWait(port, std::chrono::ceil<std::chrono::milliseconds>(left));
    // required: any chunk moves the deadline, also one of wait bytes only, but not those of the checksum.
    const bool hasCome = readChunk(port, receiver);
    if (hasCome && awaiting != Awaiting::Checksum) deadline = newDeadline(settings);
  }
  return receiver.complete();
}

}  // namespace zentaro
