// The serial communication services of the system, under their Win32 names and with their Win32 parameters.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace zentaro {

using SerialHandle = std::intptr_t;
inline constexpr SerialHandle invalidSerialHandle = -1;

/// The device-control record: line settings as they are read, changed by a settings text, and applied again.
struct LineSettings {
  std::uint32_t baudRate = 0;
  char parity = 'N';          // N, O, E, M or S
  std::uint8_t dataBits = 8;  // 5 to 8
  std::uint8_t stopBits = 1;  // 1 or 2
  bool flowControl = true;    // software or hardware flow control, either direction
  // The system's own record: all other settings, kept as read.
  alignas(8) std::array<std::byte, 128> native{};
};

struct CommTimeouts {
  std::uint32_t readInterval, readMultiplier, readConstant, writeMultiplier, writeConstant;  // milliseconds
};

/// The transfer-control block that every read, write and completion wait is given; always zero.
struct Overlapped {
  std::uintptr_t internal = 0, internalHigh = 0;
  std::uint32_t offset = 0, offsetHigh = 0;
  void* event = nullptr;
};

/// Each call that returns bool returns false on failure; GetLastError then gives the reason, as a
/// code of the system. None of them raises. A handle is what CreateFileA gave.
class SerialServices {
 public:
  virtual ~SerialServices() = default;

  /// Opens the existing serial device `name` ("COM1"; UTF-8) for exclusive use; invalidSerialHandle
  /// on failure.
  virtual SerialHandle CreateFileA(const std::string& name, std::uint32_t access, std::uint32_t shareMode,
                                   std::uint32_t creation, std::uint32_t attributes) = 0;
  virtual bool SetupComm(SerialHandle handle, std::uint32_t inputQueue, std::uint32_t outputQueue) = 0;
  /// Flags 0x0F: abort pending transfers and discard both queues.
  virtual bool PurgeComm(SerialHandle handle, std::uint32_t flags) = 0;
  virtual bool SetCommTimeouts(SerialHandle handle, const CommTimeouts& timeouts) = 0;
  virtual bool GetCommState(SerialHandle handle, LineSettings& settings) = 0;
  /// Changes `settings` as a text like "baud=9600 parity=N data=8 stop=1" says and switches flow
  /// control off; settings that the text does not name stay. False, and `settings` unchanged, for a
  /// text that cannot be parsed.
  virtual bool BuildCommDCBA(const std::string& text, LineSettings& settings) = 0;
  virtual bool SetCommState(SerialHandle handle, const LineSettings& settings) = 0;
  virtual bool CloseHandle(SerialHandle handle) = 0;
  /// Gives and clears the line-error flags; `waiting` is the number of bytes in the input queue.
  virtual bool ClearCommError(SerialHandle handle, std::uint32_t& flags, std::uint32_t& waiting) = 0;
  /// Returns at once with what has arrived, at most `count` bytes; waits, at most 1 s, only when nothing has.
  virtual bool ReadFile(SerialHandle handle, char* buffer, std::uint32_t count, std::uint32_t& read,
                        Overlapped& overlapped) = 0;
  /// May take `count` seconds; true with written < count when that time is over.
  virtual bool WriteFile(SerialHandle handle, const char* bytes, std::uint32_t count, std::uint32_t& written,
                         Overlapped& overlapped) = 0;
  virtual bool GetOverlappedResult(SerialHandle handle, Overlapped& overlapped, std::uint32_t& count,
                                   bool wait) = 0;
  /// The calling thread's last error code: errno on POSIX.
  virtual std::uint32_t GetLastError() = 0;
  /// The system's text for a code, at most 255 bytes of UTF-8; empty when it has none.
  virtual std::string FormatMessageA(std::uint32_t code) = 0;

  /// Sleeps in the kernel until a byte can be read or `limit` is over. On a handle that cannot be
  /// waited for (not open, hung up) it sleeps for all of `limit`, so that a caller that polls never
  /// spins.
  virtual void WaitForInput(SerialHandle handle, std::chrono::milliseconds limit) = 0;
};

}  // namespace zentaro
