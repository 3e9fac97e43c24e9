// Looking at ports, of which the system lists those that are there.
#include "tools/doctor/port_facts.h"

#include <algorithm>

#include "base/terminal/language.h"
#include "base/terminal/windows/text.h"

namespace zentaro::tools {

namespace {

// "COM12", whatever way of naming it was used.
std::string portOf(const std::string& device) {
  constexpr std::string_view full = R"(\\.\)";
  return device.starts_with(full) ? device.substr(full.size()) : device;
}

}  // namespace

const char *const deviceBeginning = "COM", *const deviceExample = "COM3";

bool looksLikeDevice(const std::string& name) { return portOf(name).starts_with(deviceBeginning); }

std::string whoTellsHolder() {
  return terminal::say("cierre los otros programas de la caja uno a uno, hasta que quede libre",
                       "end the other programs of the till one by one, until it is free");
}

PortFacts lookAtPort(const std::string& name, const std::string& device, bool isConfigured) {
  PortFacts facts;
  facts.name = name;
  facts.device = portOf(device);
  facts.isConfigured = isConfigured;
  wchar_t target[MAX_PATH];
  facts.exists = ::QueryDosDeviceW(terminal::wide(facts.device).c_str(), target, MAX_PATH) != 0;
  facts.isSerial = facts.exists && facts.device.starts_with(deviceBeginning);
  facts.canReadAndWrite = facts.exists;
  return facts;
}

// Its values are drivers' names and ports.
std::vector<SerialDevice> serialDevices(const std::string&) {
  std::vector<SerialDevice> devices;
  HKEY key = nullptr;
  if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, LR"(HARDWARE\DEVICEMAP\SERIALCOMM)", 0, KEY_READ, &key) !=
      ERROR_SUCCESS)
    return devices;
  for (DWORD index = 0;; ++index) {
    wchar_t name[256], port[256] = {};
    DWORD nameSize = static_cast<DWORD>(std::size(name)), size = sizeof port - sizeof(wchar_t);
    if (::RegEnumValueW(key, index, name, &nameSize, nullptr, nullptr, reinterpret_cast<BYTE*>(port),
                        &size) != ERROR_SUCCESS)
      break;
    std::string driver = terminal::narrow({name, nameSize});
    devices.push_back({terminal::narrow(port), driver.substr(driver.rfind('\\') + 1), {}});
  }
  ::RegCloseKey(key);
  std::ranges::sort(devices, {}, &SerialDevice::path);
  return devices;
}

}  // namespace zentaro::tools
