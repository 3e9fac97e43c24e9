// What the printer says on standard error while it runs.
#pragma once

#include <string>
#include <string_view>

#include "virtual-printer/line/event.h"

namespace virtual_printer {

/// One line, harmless to a terminal.
void notice(std::string_view text);

/// A text of several lines that is harmless already, on standard error.
void answerOnErrors(std::string text);

/// The printer's own complaint, under its name.
void complain(std::string_view text);

/// Faults, cuts of the power, and what could not be saved, as they happen.
class Notices final : public EventWatcher {
 public:
  void happened(const Moment& moment, const Event& event) override;
};

/// Something beside the printer's own work that fails, and may fail again and again: it is told once.
class Trouble {
 public:
  void meet(std::string_view text);
  void pass() { isTold_ = false; }

 private:
  bool isTold_ = false;
};

}  // namespace virtual_printer
