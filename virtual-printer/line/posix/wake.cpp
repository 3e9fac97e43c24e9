// The bell is an eventfd.
#include "virtual-printer/line/wake.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace virtual_printer {

Wake::Wake() : bell_{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)} {
  if (!bell_.isOpen()) throw std::runtime_error(std::string{"eventfd: "} + std::strerror(errno));
}

void Wake::ring() const noexcept {
  const std::uint64_t one = 1;
  const int before = errno;
  [[maybe_unused]] const auto written = ::write(static_cast<int>(bell_.handle()), &one, sizeof one);
  errno = before;
}

void Wake::quiet() const {
  std::uint64_t count = 0;
  [[maybe_unused]] const auto taken = ::read(static_cast<int>(bell_.handle()), &count, sizeof count);
}

}  // namespace virtual_printer
