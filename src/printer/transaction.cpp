// Waiting for an answer.
#include "printer/transaction.h"

#include <chrono>
#include <cmath>

#include "automation/conversions.h"
#include "platform/services.h"
#include "serial/modCOMM.h"

namespace zentaro {

namespace {

double now() { return services().clock->secondsSinceMidnight(); }

// A whole number of seconds, ties to even.
double newDeadline(CachedSettings& settings) { return std::nearbyint(now() + settings.timeOut()); }

// One look at the port: true when a chunk came, else after a sleep that ends with the next byte or the
// deadline.
bool readChunk(const Variant& commPort, Receiver& receiver, double deadline) {
  constexpr std::int32_t largestChunk = 4096;
  const std::int16_t port = toInt16(commPort);
  std::u16string chunk;
  if (modCOMM::CommRead(port, chunk, largestChunk) >= 1) {
    receiver.feed(chunk);
    return true;
  }
  const std::chrono::duration<double> left(deadline - now());
  if (left.count() > 0) modCOMM::CommWait(port, std::chrono::ceil<std::chrono::milliseconds>(left));
  return false;
}

}  // namespace

bool receiveAnswer(const Variant& commPort, CachedSettings& settings, Receiver& receiver) {
  double deadline = newDeadline(settings);
  // The wait for the first useful byte: any chunk moves the deadline, also one of wait bytes only.
  while (!receiver.started() && now() < deadline) {
    if (readChunk(commPort, receiver, deadline)) deadline = newDeadline(settings);
  }
  while (receiver.started() && !receiver.complete() && now() < deadline) {
    if (readChunk(commPort, receiver, deadline)) deadline = newDeadline(settings);
    // required: once the ETX is there, the chunks of the checksum do not move the deadline.
    while (receiver.hasEtx() && !receiver.complete() && now() < deadline)
      readChunk(commPort, receiver, deadline);
  }
  return receiver.complete();
}

}  // namespace zentaro
