// The lines look like those of the driver trace; when they are written, the printer object says.
#include "printer/object_trace.h"

#include "automation/conversions.h"
#include "platform/setting_keys.h"
#include "serial/trace_text.h"

namespace zentaro {

void ObjectTrace::assign(const Variant& value) {
  if (bDebugForced) return;
  file_.reset();
  if (!toBoolean(value)) return;
  TraceFile file;
  file.open(readSetting(settingObjectTraceFile));
  file_ = std::move(file);
}

void ObjectTrace::force() {
  assign(true);
  bDebugForced = true;
}

void ObjectTrace::release() {
  bDebugForced = false;
  file_.reset();
}

void ObjectTrace::TraceSend() {
  if (file_) file_->line(stampLine(u"Send", services().clock->localTime()));
}

void ObjectTrace::TraceReadStatus() {
  if (file_) file_->line(stampLine(u"ReadStatus", services().clock->localTime()));
}

void ObjectTrace::TraceDump(std::u16string_view text) {
  if (!file_) return;
  for (const std::u16string& line : dumpLines(text, *services().codePage)) file_->line(line);
}

}  // namespace zentaro
