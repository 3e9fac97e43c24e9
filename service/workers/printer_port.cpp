// The settings of the user with the device in the place of the first port.
#include "service/workers/printer_port.h"

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "platform/setting_keys.h"

namespace zentaro::service {

namespace {

Services with(till::OverlaySettings& settings, const std::string& device) {
  // Neither trace has a limit, and a service runs for years.
  for (const SettingKey& trace : {settingObjectTrace, settingDriverTrace})
    settings.replace(trace.section, trace.key, u"0");
  settings.replace(settingDriverTrace.section, "COM1", utf16(device));
  Services changed = services();
  changed.settings = &settings;
  return changed;
}

}  // namespace

PrinterPort::PrinterPort(const std::string& device)
    : settings_{*services().settings}, scope_{with(settings_, device)} {
  printer_.CommPort = 1;
}

void PrinterPort::open() {
  if (printer_.PortOpen()) return;
  try {
    printer_.PortOpen(true);
  } catch (const AutomationError&) {
    printer_.PortOpen(false);  // an opening that failed leaves its port half open
    throw;
  }
}

}  // namespace zentaro::service
