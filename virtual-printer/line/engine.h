// The printer as seen from its line: bytes in, bytes out at their time. Time is told, so tests need no clock.
#pragma once

#include <chrono>
#include <deque>
#include <optional>

#include "virtual-printer/device/device.h"
#include "virtual-printer/faults/delivery.h"
#include "virtual-printer/faults/fault_set.h"
#include "virtual-printer/line/event.h"
#include "virtual-printer/wire/receiver.h"

namespace virtual_printer {

/// Something that happens on the line.
struct Output {
  enum class Kind { Bytes, HangUp, Reconnect, PowerOn };
  std::chrono::milliseconds at{0};
  Kind kind = Kind::Bytes;
  std::string bytes;
  int exchange = 0;  // of the answer that the bytes belong to
};

enum class Speed { Immediate, Realtime };

class Engine {
 public:
  Engine(Device& device, FaultSet& faults, Speed speed, EventSink sink)
      : device_{device}, faults_{faults}, speed_{speed}, sink_{std::move(sink)} {}

  void receive(std::string_view bytes, Moment now);
  /// Takes out what is due, in order.
  std::vector<Output> due(Moment now);
  std::optional<std::chrono::milliseconds> nextDue() const;
  /// How many commands there have been.
  int exchanges() const { return exchange_; }

 private:
  void take(const Received& received, Moment now);
  void tell(Moment now, Event event);
  void answer(const Command& command, Moment now);
  void cutPower(const Fault& fault, Moment now);
  void hangUp(const Fault& fault, Moment now);
  void deliver(const std::string& frame, const std::vector<Fault>& strikes, Pace pace, Moment now);
  Pace paceOf(const Command& command, std::size_t printedLines) const;
  Answer execute(const Command& command, const std::vector<Fault>& strikes, Moment now);

  Device& device_;
  FaultSet& faults_;
  Speed speed_;
  EventSink sink_;
  Receiver receiver_;
  std::deque<Output> outbox_;  // in the order of time
  std::string previousFrame_;
  int exchange_ = 0;
  bool isDark_ = false;
};

}  // namespace virtual_printer
