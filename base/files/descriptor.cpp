// Ownership of a file descriptor.
#include "base/files/descriptor.h"

#include <unistd.h>

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
    const auto count = ::write(descriptor, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return 0;
}

}  // namespace zentaro::files
