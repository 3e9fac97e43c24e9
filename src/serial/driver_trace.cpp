// A failed opening starts it, any close stops it; it is off where its file cannot be opened.
#include "serial/driver_trace.h"

#include "automation/automation_error.h"
#include "platform/setting_keys.h"
#include "serial/driver_state.h"
#include "serial/trace_text.h"

namespace zentaro::modCOMM {
namespace {

void record(std::u16string_view word, const std::u16string& data) {
  TraceFile& trace = driverState().trace;
  if (!trace.isOpen()) return;
  trace.line(stampLine(word, services().clock->localTime()));
  CommTraceDump(data);
}

}  // namespace

void CommTraceStart() {
  CommTraceStop();
  if (readSetting(settingDriverTrace) == u"0") return;
  const std::u16string path = readSetting(settingDriverTraceFile);
  if (path.empty()) return;
  try {
    driverState().trace.open(path);
  } catch (const AutomationError& error) {
    services().host->errorBox(u"modComm", u"Imposible abrir el archivo " + path +
                                              u". Traza inhabilitada\r\nERR: " + error.description());
  }
}

void CommTraceStop() { driverState().trace.close(); }

void CommTraceRead(const std::u16string& data) { record(u"Read", data); }

void CommTraceSend(const std::u16string& data) { record(u"Send", data); }

void CommTraceDump(const std::u16string& data) {
  TraceFile& trace = driverState().trace;
  if (!trace.isOpen()) return;
  for (const std::u16string& line : dumpLines(data, *services().codePage)) trace.line(line);
}

}  // namespace zentaro::modCOMM
