// A file descriptor that is closed with its owner.
#pragma once

#include <string_view>

namespace zentaro::files {

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

/// 0, or the system's reason why not all of it was written.
int writeAll(int descriptor, std::string_view text);

}  // namespace zentaro::files
