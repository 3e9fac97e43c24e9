// A file descriptor that is closed when its owner goes, and the repetition of calls that a signal
// interrupted.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace zentaro::posix {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() { close(); }
  /// Leaves errno as it is, so that a failure can be reported after its descriptor went.
  void close() {
    const int error = errno;
    if (isOpen()) ::close(number_);  // frees the number even when it reports an error
    number_ = -1;
    errno = error;
  }

  bool isOpen() const { return number_ >= 0; }
  int number() const { return number_; }
  /// The number, which is the caller's to close from now on.
  int release() { return std::exchange(number_, -1); }

 private:
  int number_ = -1;
};

/// The result of `call`, which is made again as long as a signal interrupts it.
template <class Call>
auto uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

}  // namespace zentaro::posix
