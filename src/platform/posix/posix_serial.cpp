// The serial services over termios: each call finds its device, does its work and keeps errno for
// GetLastError.
#include <termios.h>

#include <cerrno>
#include <system_error>
#include <thread>

#include "platform/handle_table.h"
#include "platform/line_settings.h"
#include "platform/per_thread.h"
#include "platform/posix/open_device.h"
#include "platform/posix/posix_services.h"
#include "platform/posix/terminal_settings.h"
#include "platform/posix/transfer.h"
#include "platform/system_paths.h"

namespace zentaro::posix {
namespace {

using std::chrono::milliseconds;

struct LastError {
  int code = 0;
};

bool fail(int code) {
  errno = code;
  return false;
}

/// What a device answers that is gone.
bool isHangUp(int error) { return error == EIO || error == ENODEV || error == ENXIO; }

class PosixSerial : public SerialServices {
 public:
  SerialHandle CreateFileA(const std::string& name, std::uint32_t, std::uint32_t, std::uint32_t,
                           std::uint32_t) override {
    auto device = OpenDevice::open(devicePath(name));  // an empty path is ENOENT
    if (device) return devices_.add(std::move(*device));
    perThread<LastError>().code = errno;
    return invalidSerialHandle;
  }

  bool SetupComm(SerialHandle handle, std::uint32_t, std::uint32_t) override {
    return on(handle, [](OpenDevice&) { return true; });
  }

  bool PurgeComm(SerialHandle handle, std::uint32_t flags) override {
    constexpr std::uint32_t output = 0x05, input = 0x0A;  // abort or clear
    return on(handle, [flags](OpenDevice& device) {
      return ((flags & input) == 0 || ::tcflush(device.descriptor(), TCIFLUSH) == 0) &&
             ((flags & output) == 0 || ::tcflush(device.descriptor(), TCOFLUSH) == 0);
    });
  }

  bool SetCommTimeouts(SerialHandle handle, const CommTimeouts& timeouts) override {
    return on(handle, [&](OpenDevice& device) {
      if (timeouts.readInterval != 0xFFFFFFFF) return fail(EINVAL);  // gaps between bytes are not timed
      device.timeouts = timeouts;
      return true;
    });
  }

  bool GetCommState(SerialHandle handle, LineSettings& settings) override {
    return on(handle, [&](OpenDevice& device) { return readLineSettings(device.descriptor(), settings); });
  }

  bool BuildCommDCBA(const std::string& text, LineSettings& settings) override {
    const bool done = parseLineSettings(text, settings);
    if (!done) perThread<LastError>().code = EINVAL;
    return done;
  }

  bool SetCommState(SerialHandle handle, const LineSettings& settings) override {
    return on(handle, [&](OpenDevice& device) { return applyLineSettings(device.descriptor(), settings); });
  }

  bool CloseHandle(SerialHandle handle) override {
    if (devices_.remove(handle)) return true;
    perThread<LastError>().code = EBADF;
    return false;
  }

  bool ClearCommError(SerialHandle handle, std::uint32_t& flags, std::uint32_t& waiting) override {
    return on(handle, [&](OpenDevice& device) {
      const int bytes = bytesWaiting(device.descriptor());
      if (bytes < 0) return false;
      waiting = static_cast<std::uint32_t>(bytes);
      flags = device.takeLineErrors();
      return true;
    });
  }

  bool ReadFile(SerialHandle handle, char* buffer, std::uint32_t count, std::uint32_t& read,
                Overlapped&) override {
    read = 0;
    return on(handle, [&](OpenDevice& device) {
      const milliseconds limit(std::int64_t{device.timeouts.readMultiplier} * count +
                               device.timeouts.readConstant);
      std::size_t got = 0;
      const bool done = readSome(device.descriptor(), buffer, count, limit, got);
      read = static_cast<std::uint32_t>(got);
      return done;
    });
  }

  bool WriteFile(SerialHandle handle, const char* bytes, std::uint32_t count, std::uint32_t& written,
                 Overlapped&) override {
    written = 0;
    return on(handle, [&](OpenDevice& device) {
      const milliseconds limit(std::int64_t{device.timeouts.writeMultiplier} * count +
                               device.timeouts.writeConstant);
      std::size_t left = 0;
      const bool done = writeAll(device.descriptor(), {bytes, count}, limit, left);
      written = static_cast<std::uint32_t>(left);
      return done;
    });
  }

  bool GetOverlappedResult(SerialHandle, Overlapped&, std::uint32_t&, bool) override {
    perThread<LastError>().code = EINVAL;  // no transfer is ever left pending
    return false;
  }

  std::uint32_t GetLastError() override { return static_cast<std::uint32_t>(perThread<LastError>().code); }

  std::string FormatMessageA(std::uint32_t code) override {
    const int number = static_cast<int>(code);
    const std::string text = std::system_category().message(number);
    // For a code without a text the system makes one up that ends with the code.
    return text.ends_with(std::to_string(number)) ? std::string{} : text.substr(0, 255);
  }

  void WaitForInput(SerialHandle handle, milliseconds limit) override {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    const bool hasWaited =
        on(handle, [&](OpenDevice& device) { return waitForInput(device.descriptor(), deadline); });
    if (!hasWaited) std::this_thread::sleep_until(deadline);
  }

 private:
  template <class Call>
  bool on(SerialHandle handle, Call call) {
    OpenDevice* device = devices_.find(handle);
    if (device != nullptr && !device->isGone() && call(*device)) return true;
    int error = errno;
    if (device == nullptr) {
      error = EBADF;
    } else if (device->isGone() || isHangUp(error)) {
      device->giveUp();
      error = EIO;
    }
    perThread<LastError>().code = error;
    return false;
  }

  HandleTable<OpenDevice> devices_;
};

}  // namespace

SerialServices& serialServices() { return lasting<PosixSerial>(); }

}  // namespace zentaro::posix
