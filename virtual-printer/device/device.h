// The printer behind the line: takes commands, gives answers, keeps the books. Knows no bytes, clock or files.
#pragma once

#include <functional>

#include "virtual-printer/device/works.h"
#include "virtual-printer/wire/frame.h"

namespace virtual_printer {

class Device {
 public:
  /// Called whenever the books have changed, before anything is printed and the answer leaves. False: they
  /// could not be saved, and the command is refused.
  using SaveBooks = std::function<bool(const Books&)>;

  Device(Identity identity, Books books, SaveBooks save);

  /// hostTime is the true local time; the printer's own clock may have been set to another.
  Answer execute(const Command& command, LocalTime hostTime);
  /// The unframed reset: an open document ends as cancelled, the slip station is off.
  void reset();
  /// Power came back: a document that was open is printed as cancelled.
  void start(LocalTime hostTime);

  Roll& roll() { return roll_; }
  Conditions& conditions() { return works_.conditions; }
  const Works& works() const { return works_; }

 private:
  std::vector<std::string> run(const Command& command);
  bool saveIfChanged();

  Works works_;
  Roll roll_;
  Account saved_;  // a Z closing changes its number here, too
  SaveBooks save_;
};

}  // namespace virtual_printer
