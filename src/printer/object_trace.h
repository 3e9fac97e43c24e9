// The object trace: the traffic of one printer object in a text file, for diagnosis. Writes nothing
// while it is off.
#pragma once

#include <optional>
#include <string_view>

#include "automation/variant.h"
#include "serial/trace_file.h"

namespace zentaro {

class ObjectTrace {
 public:
  bool isOn() const { return file_.has_value(); }

  /// Closes the file and, when `value` is True, opens the file of the setting "DumpZT" (again).
  /// Ignored while forced. When the file cannot be opened the trace is off and the error (53, 75,
  /// 76, ...) reaches the caller.
  void assign(const Variant& value);
  /// On for good, until release(); the state of the setting "DebugZT".
  void force();
  void release();

  // The writers; each raises when its line cannot be written.
  void TraceSend();
  void TraceReadStatus();
  void TraceDump(std::u16string_view text);

 private:
  bool bDebugForced = false;
  std::optional<TraceFile> file_;
};

}  // namespace zentaro
