// Ownership of a file descriptor.
#include "base/files/descriptor.h"

#include <unistd.h>

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

}  // namespace zentaro::files
