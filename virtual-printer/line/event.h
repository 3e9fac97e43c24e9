// What happens on the line and in the printer, as the log and the user see it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "virtual-printer/device/works.h"
#include "virtual-printer/wire/frame.h"

namespace virtual_printer {

/// A point in time: steady for what is due when, local for what is printed.
struct Moment {
  std::chrono::milliseconds steady{0};
  LocalTime local{};
};

enum class EventKind { Command, Answer, Noise, Reset, Fault, Power, Unsaved };

struct Event {
  EventKind kind = EventKind::Noise;
  // Of the command; of the fault, in the words of its plan; "off" or "on" of the power; why it is unsaved.
  std::string name{};
  std::string bytes{};  // a command's frame, the reset, or what was neither
  int sequence = 0;
  std::uint8_t code = 0;
  std::vector<std::string> fields{};
  std::uint16_t printerStatus = 0, fiscalStatus = 0;
  int exchange = 0;  // counts the commands: what belongs to one of them carries its number
};

using EventSink = std::function<void(const Moment&, const Event&)>;

/// Who is told what happens while the printer runs: the log, the terminal.
class EventWatcher {
 public:
  EventWatcher() = default;
  EventWatcher(const EventWatcher&) = delete;
  EventWatcher& operator=(const EventWatcher&) = delete;
  virtual ~EventWatcher() = default;
  virtual void happened(const Moment& moment, const Event& event) = 0;
};

}  // namespace virtual_printer
