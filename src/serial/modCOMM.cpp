// The serial port driver. Each operation does its system calls in a fixed order and stops at the
// first that fails.
#include "serial/modCOMM.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "automation/automation_error.h"
#include "platform/services.h"
#include "serial/driver_state.h"
#include "serial/driver_trace.h"
#include "serial/last_error.h"
#include "text/unicode.h"

namespace zentaro::modCOMM {
namespace {

using std::chrono::milliseconds;

constexpr std::uint32_t stillPending = 997, notYetComplete = 996;
constexpr std::uint32_t bufferSize = 4096;
constexpr int yieldsAfterWrite = 10;

/// A mistake that an operation finds in its own arguments.
struct Fault {
  std::int32_t number;
  std::u16string description;
  int line;
};

SerialServices& serial() { return *services().serial; }

void YieldToHost(int times) {
  Host& host = *services().host;
  for (; times > 0; --times) host.yield();
}

/// `line` is the caller's own.
PortEntry& portAt(std::int16_t port, int line = __builtin_LINE()) {
  auto& ports = driverState().ports;
  if (port < 1 || port > static_cast<int>(ports.size())) throw Fault{9, u"Subscript out of range", line};
  return ports[static_cast<std::size_t>(port - 1)];
}

/// Configures a device that was just opened; the name of the system call that failed, or nothing.
std::u16string_view configure(PortEntry& entry, const std::string& settings) {
  constexpr CommTimeouts timeouts{0xFFFFFFFF, 0, 1000, 1000, 0};
  if (!serial().SetupComm(entry.handle, 1024, 1024)) return u"SetupComm";
  if (!serial().PurgeComm(entry.handle, 0x0F)) return u"PurgeComm";
  if (!serial().SetCommTimeouts(entry.handle, timeouts)) return u"SetCommTimeouts";
  if (!serial().GetCommState(entry.handle, entry.line)) return u"GetCommState";
  if (!serial().BuildCommDCBA(settings, entry.line)) return u"BuildCommDCB";
  if (!serial().SetCommState(entry.handle, entry.line)) return u"SetCommState";
  return {};
}

std::int32_t openPort(PortEntry& entry, const std::string& device, const std::string& settings) {
  if (entry.open) return keepError(-1, u"CommOpen", u"Port in use.");
  entry.services = &serial();
  entry.handle = serial().CreateFileA(device, 0xC0000000, 0, 3, 0x80);
  if (entry.handle == invalidSerialHandle) {
    return CommRecordError(serial().GetLastError(), u"CommOpen (CreateFile)");
  }
  entry.open = true;  // required: a configuration that fails leaves the port open, for CommClose to release
  const std::u16string_view failed = configure(entry, settings);
  if (failed.empty()) return 0;
  return CommRecordError(serial().GetLastError(), u"CommOpen (" + std::u16string(failed) + u")");
}

std::int32_t closePort(PortEntry& entry) {
  if (!entry.open) return 0;
  if (!serial().CloseHandle(entry.handle)) {
    return CommRecordError(serial().GetLastError(), u"CommClose (CloseHandle)");
  }
  entry.open = false;
  return 0;
}

/// Waits until a pending transfer is over; the code of a wait that failed.
std::optional<std::uint32_t> waitForTransfer(const PortEntry& entry, std::uint32_t& count) {
  while (!serial().GetOverlappedResult(entry.handle, driverState().overlapped, count, true)) {
    if (const std::uint32_t code = serial().GetLastError(); code != notYetComplete) return code;
  }
  return std::nullopt;
}

std::int32_t readPort(const PortEntry& entry, std::u16string& data, std::int32_t wanted) {
  std::uint32_t flags = 0, waiting = 0;
  if (!serial().ClearCommError(entry.handle, flags, waiting)) {
    CommRecordError(serial().GetLastError(), u"CommRead (ClearCommError)");
    return -1;
  }
  if (waiting == 0) return 0;

  const auto size = std::min(std::max(waiting, static_cast<std::uint32_t>(std::max(wanted, 0))), bufferSize);
  std::array<char, bufferSize> buffer;
  std::uint32_t count = 0;
  if (!serial().ReadFile(entry.handle, buffer.data(), size, count, driverState().overlapped)) {
    const std::uint32_t code = serial().GetLastError();
    if (code != stillPending) {
      CommRecordLineError(code, u"CommRead (ReadFile)", entry);
      return -1;
    }
    if (const auto failure = waitForTransfer(entry, count)) {
      CommRecordLineError(*failure, u"CommRead (GetOverlappedResult)", entry);
      return -1;
    }
  }
  data = services().codePage->text(std::string_view(buffer.data(), count));
  return static_cast<std::int32_t>(data.size());
}

/// `written` counts what left, as far as the calls say so before anything is raised.
void writePort(const PortEntry& entry, const std::string& bytes, std::int32_t& written) {
  const auto size = static_cast<std::uint32_t>(bytes.size());
  std::uint32_t count = 0;
  const bool done = serial().WriteFile(entry.handle, bytes.data(), size, count, driverState().overlapped);
  const std::uint32_t code =
      done ? 0 : serial().GetLastError();  // before the host's code can make calls of its own
  YieldToHost(1);
  written = static_cast<std::int32_t>(count);
  if (done) return YieldToHost(yieldsAfterWrite);
  if (code == 0) return;
  if (code != stillPending) {
    CommRecordLineError(code, u"CommWrite (WriteFile)", entry);
    written = -1;
    return;
  }
  const auto failure = waitForTransfer(entry, count);
  written = static_cast<std::int32_t>(count);
  if (!failure) return YieldToHost(yieldsAfterWrite);
  CommRecordLineError(*failure, u"CommWrite (GetOverlappedResult)", entry);
}

/// A line that cannot be written is a fault of the operation, whose bytes have moved all the same;
/// the trace is off then.
void trace(void (*write)(const std::u16string&), const std::u16string& data, std::u16string_view function) {
  try {
    write(data);
  } catch (const AutomationError& error) {
    CommTraceStop();
    keepError(error.number(), function, error.description());
  }
}

}  // namespace

std::int32_t CommOpen(std::int16_t port, const std::u16string& device, const std::u16string& settings) {
  std::int32_t result = 0;
  try {
    result = openPort(portAt(port), utf8(device), utf8(settings));
  } catch (const Fault& fault) {
    result = keepError(fault.number, u"CommOpen",
                       fault.description + u" LINEA " + utf16(std::to_string(fault.line)));
  }
  if (result != 0) CommTraceStart();
  return result;
}

std::int32_t CommClose(std::int16_t port) {
  std::int32_t result = 0;
  try {
    result = closePort(portAt(port));
  } catch (const Fault& fault) {
    result = keepError(fault.number, u"CommClose", fault.description);
  }
  CommTraceStop();
  return result;
}

std::int32_t CommRead(std::int16_t port, std::u16string& data, std::int32_t wanted) {
  data.clear();
  std::int32_t count = -1;
  try {
    YieldToHost(1);  // required: also for a port that there is not, so that the host never freezes
    count = readPort(portAt(port), data, wanted);
  } catch (const Fault& fault) {
    keepError(fault.number, u"CommRead", fault.description);
  }
  if (count > 0) trace(CommTraceRead, data, u"CommRead");
  return count;
}

// The text is a copy: the host may change its own while it runs during the write.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
std::int32_t CommWrite(std::int16_t port, std::u16string data) {
  std::int32_t written = 0;
  try {
    writePort(portAt(port), services().codePage->bytes(data), written);
  } catch (const Fault& fault) {
    keepError(fault.number, u"CommWrite", fault.description);
  }
  if (written != -1) trace(CommTraceSend, data, u"CommWrite");
  return written;
}

void CommWait(std::int16_t port, milliseconds limit) {
  // 9 ms: a sleep overshoots a little, and the host is promised 100 yields a second.
  const milliseconds longest(services().host->wantsYields() ? 9 : 250);
  const auto& ports = driverState().ports;
  const bool exists = port >= 1 && port <= static_cast<int>(ports.size());
  const PortEntry* entry = exists ? &ports[static_cast<std::size_t>(port - 1)] : nullptr;
  const SerialHandle handle = entry != nullptr && entry->open ? entry->handle : invalidSerialHandle;
  serial().WaitForInput(handle, std::clamp(limit, milliseconds(0), longest));
}

}  // namespace zentaro::modCOMM
