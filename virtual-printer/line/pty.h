// The line: a pseudo-terminal whose slave side a host opens like a serial port.
#pragma once

#include <string>
#include <string_view>

#include "line/descriptor.h"

namespace printer {

class Pty {
 public:
  // A new pseudo-terminal under a new device name; before it there is no line. Throws std::system_error when
  // the system has none to give.
  void connect();
  // The host sees its device vanish.
  void hangUp();

  // Negative while there is no line.
  int descriptor() const { return master_.get(); }
  const std::string& device() const { return device_; }

  // What the host has sent; empty when there is nothing.
  std::string read();
  // Bytes that the host's side has no room for are lost, as on a line without flow control.
  void write(std::string_view bytes);
  // A host that died leaves the device marked as in exclusive use; lifts the mark when nobody holds the lock.
  void liftStaleExclusiveUse();

 private:
  Descriptor master_;
  Descriptor slave_;  // kept open, so that a host closing the port never hangs the line up
  std::string device_;
};

}  // namespace printer
