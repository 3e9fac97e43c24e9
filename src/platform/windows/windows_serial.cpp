// The serial services of Win32 as they are: each call finds its port and does its work.
#include <cstring>
#include <thread>

#include "platform/handle_table.h"
#include "platform/system_paths.h"
#include "platform/windows/open_port.h"
#include "platform/windows/windows_services.h"
#include "text/unicode.h"

namespace zentaro::windows {
namespace {

using std::chrono::milliseconds;

static_assert(sizeof(DCB) <= sizeof(LineSettings::native));

constexpr char parityLetters[] = "NOEMS";  // by NOPARITY to SPACEPARITY

DCB nativeOf(const LineSettings& settings) {
  DCB native;
  std::memcpy(&native, settings.native.data(), sizeof native);
  return native;
}

void keep(const DCB& native, LineSettings& settings) {
  settings.baudRate = native.BaudRate;
  settings.parity = native.Parity <= SPACEPARITY ? parityLetters[native.Parity] : 'N';
  settings.dataBits = native.ByteSize;
  settings.stopBits = native.StopBits == ONESTOPBIT ? 1 : 2;
  settings.flowControl = native.fOutX || native.fInX || native.fOutxCtsFlow || native.fOutxDsrFlow ||
                         native.fRtsControl == RTS_CONTROL_HANDSHAKE ||
                         native.fDtrControl == DTR_CONTROL_HANDSHAKE;
  std::memcpy(settings.native.data(), &native, sizeof native);
}

bool fail(DWORD code) {
  ::SetLastError(code);
  return false;
}

class WindowsSerial : public SerialServices {
 public:
  SerialHandle CreateFileA(const std::string& name, std::uint32_t access, std::uint32_t shareMode,
                           std::uint32_t creation, std::uint32_t attributes) override {
    HANDLE const handle = ::CreateFileW(wide(utf16(devicePath(name))).c_str(), access, shareMode, nullptr,
                                        creation, attributes, nullptr);
    return handle == INVALID_HANDLE_VALUE ? invalidSerialHandle : ports_.add(OpenPort(handle));
  }

  bool SetupComm(SerialHandle handle, std::uint32_t inputQueue, std::uint32_t outputQueue) override {
    return on(handle,
              [&](OpenPort& port) { return ::SetupComm(port.handle(), inputQueue, outputQueue) != 0; });
  }

  bool PurgeComm(SerialHandle handle, std::uint32_t flags) override {
    return on(handle, [&](OpenPort& port) { return port.purge(flags); });
  }

  bool SetCommTimeouts(SerialHandle handle, const CommTimeouts& timeouts) override {
    return on(handle, [&](OpenPort& port) { return port.setTimeouts(timeouts); });
  }

  bool GetCommState(SerialHandle handle, LineSettings& settings) override {
    return on(handle, [&](OpenPort& port) {
      DCB native{};
      native.DCBlength = sizeof native;
      const bool done = ::GetCommState(port.handle(), &native) != 0;
      if (done) keep(native, settings);
      return done;
    });
  }

  bool BuildCommDCBA(const std::string& text, LineSettings& settings) override {
    DCB native = nativeOf(settings);
    const bool done = ::BuildCommDCBA(text.c_str(), &native) != 0;
    if (done) keep(native, settings);
    return done;
  }

  bool SetCommState(SerialHandle handle, const LineSettings& settings) override {
    return on(handle, [&](OpenPort& port) {
      DCB native = nativeOf(settings);
      return ::SetCommState(port.handle(), &native) != 0;
    });
  }

  bool CloseHandle(SerialHandle handle) override {
    return ports_.remove(handle) || fail(ERROR_INVALID_HANDLE);
  }

  bool ClearCommError(SerialHandle handle, std::uint32_t& flags, std::uint32_t& waiting) override {
    return on(handle, [&](OpenPort& port) { return port.status(flags, waiting); });
  }

  bool ReadFile(SerialHandle handle, char* buffer, std::uint32_t count, std::uint32_t& read,
                Overlapped&) override {
    read = 0;
    return on(handle, [&](OpenPort& port) { return port.read(buffer, count, read); });
  }

  bool WriteFile(SerialHandle handle, const char* bytes, std::uint32_t count, std::uint32_t& written,
                 Overlapped&) override {
    written = 0;
    return on(handle, [&](OpenPort& port) {
      DWORD left = 0;
      const bool done = ::WriteFile(port.handle(), bytes, count, &left, nullptr) != 0;
      written = left;
      return done;
    });
  }

  bool GetOverlappedResult(SerialHandle, Overlapped&, std::uint32_t&, bool) override {
    return fail(ERROR_INVALID_FUNCTION);  // no transfer is ever left pending
  }

  std::uint32_t GetLastError() override { return ::GetLastError(); }

  std::string FormatMessageA(std::uint32_t code) override {
    wchar_t text[256];
    const DWORD length = ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                          code, 0, text, static_cast<DWORD>(std::size(text)) - 1, nullptr);
    return utf8(narrow({text, length}));
  }

  void WaitForInput(SerialHandle handle, milliseconds limit) override {
    if (OpenPort* port = ports_.find(handle)) return port->waitForByte(limit);
    std::this_thread::sleep_for(limit);
  }

 private:
  template <class Call>
  bool on(SerialHandle handle, Call call) {
    OpenPort* port = ports_.find(handle);
    return port != nullptr ? call(*port) : fail(ERROR_INVALID_HANDLE);
  }

  HandleTable<OpenPort> ports_;
};

}  // namespace

SerialServices& serialServices() { return lasting<WindowsSerial>(); }

}  // namespace zentaro::windows
