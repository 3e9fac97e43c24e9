// The line: a pseudo-terminal whose slave side a host opens like a serial port.
#pragma once

#include <string>
#include <string_view>

namespace printer {

// A file descriptor that is closed with its owner.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_{number} {}
  Descriptor(Descriptor&& other) noexcept : number_{other.release()} {}
  Descriptor& operator=(Descriptor&& other) noexcept;
  ~Descriptor() { close(); }
  int get() const { return number_; }
  bool isOpen() const { return number_ >= 0; }
  int release();
  void close();

 private:
  int number_;
};

class Pty {
 public:
  // Throws std::system_error when the system has no pseudo-terminal to give.
  Pty();

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
