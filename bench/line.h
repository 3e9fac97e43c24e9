// Two pseudo-terminals with a process behind them that answers at once: the printer's protocol on one, Modbus
// on the other. And the bare client, which does what any program must: write, wait, read.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

namespace bench {

class Responder {
 public:
  /// `bitsPerSecond`: the pace of the line, 0 for none.
  explicit Responder(int bitsPerSecond = 0);
  ~Responder();
  Responder(const Responder&) = delete;
  Responder& operator=(const Responder&) = delete;

  const std::string& printer() const { return printer_; }
  const std::string& modbus() const { return modbus_; }
  /// When the last answer was handed to the line, by the clock of wallSeconds().
  double answeredAt() const { return *answeredAt_; }

 private:
  std::string printer_, modbus_;
  double* answeredAt_;
  pid_t process_;
};

/// A pseudo-terminal behind which nobody answers.
class SilentLine {
 public:
  SilentLine();
  ~SilentLine();
  SilentLine(const SilentLine&) = delete;
  SilentLine& operator=(const SilentLine&) = delete;
  const std::string& device() const { return device_; }

 private:
  std::string device_;
  int master_;
};

/// The command of an invoice line as the library sends it, byte for byte but for its sequence number.
inline constexpr std::string_view itemCommand =
    "\x02!B\x1C"
    "CAFE MOLIDO\x1C"
    "2000\x1C"
    "1250\x1C"
    "1600\x1C"
    "M\x03"
    "0685";

class BareClient {
 public:
  explicit BareClient(const std::string& device);
  ~BareClient();
  BareClient(const BareClient&) = delete;
  BareClient& operator=(const BareClient&) = delete;

  /// Sends the command and reads until the checksum of an answer is there.
  void exchange();

 private:
  int device_;
};

}  // namespace bench
