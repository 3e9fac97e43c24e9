// Transfers on a non-blocking descriptor: every wait is a poll() up to a deadline, so signals and
// short transfers only cost another turn.
#include "platform/posix/transfer.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>

#include "platform/posix/descriptor.h"
#include "platform/posix/line_status.h"

namespace zentaro::posix {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr short hangUp = POLLHUP | POLLERR | POLLNVAL;

/// The events that ended the wait; 0 when the deadline did.
short waitFor(int descriptor, short events, steady_clock::time_point deadline) {
  constexpr milliseconds longestPoll = std::chrono::hours(1);  // poll() counts in an int
  for (;;) {
    const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
    pollfd state{descriptor, events, 0};
    const int ready =
        ::poll(&state, 1, static_cast<int>(std::clamp(left, milliseconds(0), longestPoll).count()));
    if (ready > 0) return state.revents;
    if (ready < 0 && errno != EINTR) return POLLNVAL;
    if (steady_clock::now() >= deadline) return 0;
  }
}

bool isWorthRetrying(int error) { return error == EAGAIN || error == EINTR; }

bool failHungUp() {
  errno = EIO;
  return false;
}

}  // namespace

bool readSome(int descriptor, char* buffer, std::size_t count, milliseconds limit, std::size_t& got) {
  got = 0;
  const auto deadline = steady_clock::now() + limit;
  for (bool hasPolled = false;; hasPolled = true) {
    const ssize_t result = ::read(descriptor, buffer, count);
    if (result > 0) {
      got = static_cast<std::size_t>(result);
      return true;
    }
    if (result < 0 && !isWorthRetrying(errno)) return false;
    if (result == 0 && hasPolled) return true;  // a raw terminal says so when nothing is there after all
    const short events = waitFor(descriptor, POLLIN, deadline);
    if ((events & hangUp) != 0) return failHungUp();
    if (events == 0) return true;
  }
}

bool writeAll(int descriptor, std::string_view bytes, milliseconds limit, std::size_t& written) {
  written = 0;
  const auto deadline = steady_clock::now() + limit;
  while (written < bytes.size()) {
    const ssize_t result = ::write(descriptor, bytes.data() + written, bytes.size() - written);
    if (result > 0) {
      written += static_cast<std::size_t>(result);
      continue;
    }
    if (result < 0 && !isWorthRetrying(errno)) return false;
    const short events = waitFor(descriptor, POLLOUT, deadline);
    if ((events & hangUp) != 0) return failHungUp();
    if (events == 0) return true;
  }
  return true;
}

bool waitForInput(int descriptor, steady_clock::time_point deadline) {
  const short events = waitFor(descriptor, POLLIN, deadline);
  return (events & hangUp) == 0 || bytesWaiting(descriptor) > 0 || failHungUp();
}

}  // namespace zentaro::posix
