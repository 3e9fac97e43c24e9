// The log: one JSON object a line, so that a test in any language can read it.
#pragma once

#include <string>

#include "base/files/descriptor.h"
#include "virtual-printer/line/event.h"
#include "virtual-printer/shell/notices.h"

namespace virtual_printer {

std::string logLine(const Moment& moment, const Event& event);

class LogFile final : public EventWatcher {
 public:
  /// Appends to the file. Throws std::runtime_error when it cannot be opened.
  explicit LogFile(const std::string& path);

  /// Written through at once. A log that cannot be written is told once; the printer goes on.
  void happened(const Moment& moment, const Event& event) override;

 private:
  zentaro::files::Descriptor file_;
  Trouble trouble_;
};

}  // namespace virtual_printer
