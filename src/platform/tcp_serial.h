// Lines over TCP beside the serial devices of the system.
#pragma once

#include "platform/handle_table.h"
#include "platform/serial_services.h"
#include "platform/tcp_line.h"

namespace zentaro {

/// The services below for every device but one whose name leads to "tcp://host:port". There the line settings
/// are taken as they come and change nothing: the far side has its own. Handles of such lines are below that of
/// no device, those of the services below above it.
class TcpSerial : public SerialServices {
 public:
  explicit TcpSerial(SerialServices& below) : below_(below) {}

  SerialHandle CreateFileA(const std::string& name, std::uint32_t access, std::uint32_t shareMode,
                           std::uint32_t creation, std::uint32_t attributes) override;
  bool SetupComm(SerialHandle handle, std::uint32_t inputQueue, std::uint32_t outputQueue) override;
  bool PurgeComm(SerialHandle handle, std::uint32_t flags) override;
  bool SetCommTimeouts(SerialHandle handle, const CommTimeouts& timeouts) override;
  bool GetCommState(SerialHandle handle, LineSettings& settings) override;
  bool BuildCommDCBA(const std::string& text, LineSettings& settings) override;
  bool SetCommState(SerialHandle handle, const LineSettings& settings) override;
  bool CloseHandle(SerialHandle handle) override;
  bool ClearCommError(SerialHandle handle, std::uint32_t& flags, std::uint32_t& waiting) override;
  bool ReadFile(SerialHandle handle, char* buffer, std::uint32_t count, std::uint32_t& read,
                Overlapped& overlapped) override;
  bool WriteFile(SerialHandle handle, const char* bytes, std::uint32_t count, std::uint32_t& written,
                 Overlapped& overlapped) override;
  bool GetOverlappedResult(SerialHandle handle, Overlapped& overlapped, std::uint32_t& count,
                           bool wait) override;
  std::uint32_t GetLastError() override;
  std::string FormatMessageA(std::uint32_t code) override { return below_.FormatMessageA(code); }
  void WaitForInput(SerialHandle handle, std::chrono::milliseconds limit) override;

 private:
  /// What `below` gives, or `here` on the line over TCP that the handle is of.
  template <class Below, class Here>
  bool either(SerialHandle handle, Below below, Here here);

  SerialServices& below_;
  HandleTable<TcpLine> lines_;
};

}  // namespace zentaro
