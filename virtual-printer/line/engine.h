// The printer as seen from its line: bytes in, bytes out at their time. Time is told, so tests need no clock.
#pragma once

#include <chrono>
#include <deque>
#include <optional>

#include "device/device.h"
#include "wire/receiver.h"

namespace printer {

// A point in time: steady for what is due when, local for what is printed.
struct Moment {
  std::chrono::milliseconds steady{0};
  LocalTime local{};
};

// Something that happens on the line.
struct Output {
  std::chrono::milliseconds at{0};
  std::string bytes;
};

class Engine {
 public:
  explicit Engine(Device& device) : device_{device} {}

  void receive(std::string_view bytes, Moment now);
  // Takes out what is due, in order.
  std::deque<Output> due(std::chrono::milliseconds now);
  std::optional<std::chrono::milliseconds> nextDue() const;

 private:
  void take(const Received& received, Moment now);

  Device& device_;
  Receiver receiver_;
  std::deque<Output> outbox_;
};

}  // namespace printer
