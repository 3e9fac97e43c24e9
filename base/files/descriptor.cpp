// Ownership of a file descriptor.
#include "base/files/descriptor.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace zentaro::files {

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  if (this != &other) {
    close();
    number_ = other.release();
  }
  return *this;
}

int Descriptor::release() { return std::exchange(number_, -1); }

void Descriptor::close() {
  if (isOpen()) ::close(release());
}

int writeAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    constexpr std::size_t most = 1U << 30;  // what every system's count can hold
    const auto count = ::write(descriptor, text.data(), static_cast<unsigned>(std::min(text.size(), most)));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return 0;
}

}  // namespace zentaro::files
