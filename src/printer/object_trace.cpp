// The object trace.
#include "printer/object_trace.h"

#include "automation/conversions.h"
#include "platform/setting_keys.h"
#include "serial/trace_text.h"

namespace zentaro {

void ObjectTrace::assign(const Variant& value) {
  if (forced_) return;
  file_.reset();
  if (!toBoolean(value)) return;
  TraceFile file;
  file.open(readSetting(settingObjectTraceFile));
  file_ = std::move(file);
}

void ObjectTrace::force() {
  assign(true);
  forced_ = true;
}

void ObjectTrace::release() {
  forced_ = false;
  file_.reset();
}

void ObjectTrace::send() {
  if (file_) file_->line(stampLine(u"Send", services().clock->localTime()));
}

void ObjectTrace::readStatus() {
  if (file_) file_->line(stampLine(u"ReadStatus", services().clock->localTime()));
}

void ObjectTrace::dump(std::u16string_view text) {
  if (!file_) return;
  for (const std::u16string& line : dumpLines(text, *services().codePage)) file_->line(line);
}

}  // namespace zentaro
