// Each call goes to a line over TCP or to the services below, by its handle.
#include "platform/tcp_serial.h"

#include <thread>

#include "platform/per_thread.h"
#include "platform/system_paths.h"

namespace zentaro {
namespace {

/// Of the calling thread's last failure; 0 when that was one of the services below.
struct TcpError {
  std::uint32_t code = 0;
};

void setError(std::uint32_t code) { perThread<TcpError>().code = code; }

bool isTcp(SerialHandle handle) { return handle < invalidSerialHandle; }
/// Between the table's numbers, from 1 on, and the handles, from -2 down.
SerialHandle mirrored(SerialHandle handle) { return invalidSerialHandle - handle; }

bool succeed(TcpLine&) { return true; }

}  // namespace

template <class Below, class Here>
bool TcpSerial::either(SerialHandle handle, Below below, Here here) {
  setError(0);
  if (!isTcp(handle)) return below();
  TcpLine* const line = lines_.find(mirrored(handle));
  if (line != nullptr && here(*line)) return true;
  setError(line == nullptr ? sockets::codes.badHandle : line->error());
  return false;
}

SerialHandle TcpSerial::CreateFileA(const std::string& name, std::uint32_t access, std::uint32_t shareMode,
                                    std::uint32_t creation, std::uint32_t attributes) {
  setError(0);
  const std::string device = devicePath(name);
  if (!isTcpName(device)) return below_.CreateFileA(name, access, shareMode, creation, attributes);
  std::uint32_t error = sockets::codes.badName;
  if (const auto address = parseTcpName(device)) {
    if (auto line = TcpLine::open(*address, error)) return mirrored(lines_.add(std::move(*line)));
  }
  setError(error);
  return invalidSerialHandle;
}

bool TcpSerial::SetupComm(SerialHandle handle, std::uint32_t inputQueue, std::uint32_t outputQueue) {
  return either(
      handle, [&] { return below_.SetupComm(handle, inputQueue, outputQueue); }, succeed);
}

bool TcpSerial::PurgeComm(SerialHandle handle, std::uint32_t flags) {
  return either(
      handle, [&] { return below_.PurgeComm(handle, flags); }, [](TcpLine& line) { return line.purge(); });
}

bool TcpSerial::SetCommTimeouts(SerialHandle handle, const CommTimeouts& timeouts) {
  return either(
      handle, [&] { return below_.SetCommTimeouts(handle, timeouts); },
      [&](TcpLine& line) {
        line.timeouts = timeouts;
        return true;
      });
}

bool TcpSerial::GetCommState(SerialHandle handle, LineSettings& settings) {
  return either(
      handle, [&] { return below_.GetCommState(handle, settings); },
      [&](TcpLine&) {
        settings = LineSettings{};
        return true;
      });
}

bool TcpSerial::BuildCommDCBA(const std::string& text, LineSettings& settings) {
  setError(0);
  return below_.BuildCommDCBA(text, settings);
}

bool TcpSerial::SetCommState(SerialHandle handle, const LineSettings& settings) {
  return either(
      handle, [&] { return below_.SetCommState(handle, settings); }, succeed);
}

bool TcpSerial::CloseHandle(SerialHandle handle) {
  return either(
             handle, [&] { return below_.CloseHandle(handle); }, succeed) &&
         (!isTcp(handle) || lines_.remove(mirrored(handle)));
}

bool TcpSerial::ClearCommError(SerialHandle handle, std::uint32_t& flags, std::uint32_t& waiting) {
  return either(
      handle, [&] { return below_.ClearCommError(handle, flags, waiting); },
      [&](TcpLine& line) {
        flags = 0;
        return line.waiting(waiting);
      });
}

bool TcpSerial::ReadFile(SerialHandle handle, char* buffer, std::uint32_t count, std::uint32_t& read,
                         Overlapped& overlapped) {
  read = 0;
  return either(
      handle, [&] { return below_.ReadFile(handle, buffer, count, read, overlapped); },
      [&](TcpLine& line) { return line.read(buffer, count, read); });
}

bool TcpSerial::WriteFile(SerialHandle handle, const char* bytes, std::uint32_t count, std::uint32_t& written,
                          Overlapped& overlapped) {
  written = 0;
  return either(
      handle, [&] { return below_.WriteFile(handle, bytes, count, written, overlapped); },
      [&](TcpLine& line) {
        return line.write({bytes, count}, written);
      });
}

bool TcpSerial::GetOverlappedResult(SerialHandle handle, Overlapped& overlapped, std::uint32_t& count,
                                    bool wait) {
  setError(0);
  return below_.GetOverlappedResult(handle, overlapped, count, wait);  // no transfer is ever left pending
}

std::uint32_t TcpSerial::GetLastError() {
  const std::uint32_t own = perThread<TcpError>().code;
  return own != 0 ? own : below_.GetLastError();
}

void TcpSerial::WaitForInput(SerialHandle handle, std::chrono::milliseconds limit) {
  if (!isTcp(handle)) return below_.WaitForInput(handle, limit);
  if (TcpLine* const line = lines_.find(mirrored(handle))) return line->waitForInput(limit);
  std::this_thread::sleep_for(limit);
}

}  // namespace zentaro
