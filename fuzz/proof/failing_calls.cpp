// The calls under their real names, each with the failures that it can have.
#include "failing_calls.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <ctime>

namespace proof {
namespace {

using Effect = Failure::Effect;

constexpr Failure openFailures[] = {{"ENOENT", ENOENT}, {"EACCES", EACCES}, {"EBUSY", EBUSY},
                                    {"EMFILE", EMFILE}, {"ENXIO", ENXIO},   {"ENOMEM", ENOMEM},
                                    {"EINTR", EINTR},   {"EIO", EIO}};
constexpr Failure closeFailures[] = {{"EIO", EIO}, {"EINTR", EINTR}};
constexpr Failure readFailures[] = {{"EIO", EIO, Effect::Error, true},
                                    {"EINTR", EINTR},
                                    {"EAGAIN", EAGAIN},
                                    {"ENODEV", ENODEV, Effect::Error, true},
                                    {"one byte", 0, Effect::Short},
                                    {"no byte", 0, Effect::Nothing}};
constexpr Failure writeFailures[] = {
    {"EIO", EIO, Effect::Error, true},       {"EINTR", EINTR}, {"EAGAIN", EAGAIN},
    {"ENOSPC", ENOSPC, Effect::Error, true}, {"EPIPE", EPIPE}, {"one byte", 0, Effect::Short},
    {"no byte", 0, Effect::Nothing}};
constexpr Failure readFileFailures[] = {{"EIO", EIO},
                                        {"EINTR", EINTR},
                                        {"EISDIR", EISDIR},
                                        {"one byte", 0, Effect::Short},
                                        {"no byte", 0, Effect::Nothing}};
constexpr Failure writeFileFailures[] = {{"EIO", EIO, Effect::Error, true},
                                         {"EINTR", EINTR},
                                         {"ENOSPC", ENOSPC, Effect::Error, true},
                                         {"one byte", 0, Effect::Short}};
constexpr Failure ioctlFailures[] = {{"EIO", EIO, Effect::Error, true},
                                     {"ENOTTY", ENOTTY, Effect::Error, true},
                                     {"EINTR", EINTR},
                                     {"ENODEV", ENODEV, Effect::Error, true}};
constexpr Failure pollFailures[] = {{"EINTR", EINTR},
                                    {"ENOMEM", ENOMEM, Effect::Error, true},
                                    {"nothing ready", 0, Effect::Nothing},
                                    {"hang-up", 0, Effect::HangUp, true}};
constexpr Failure flockFailures[] = {{"EWOULDBLOCK", EWOULDBLOCK}, {"EINTR", EINTR}, {"ENOLCK", ENOLCK}};
constexpr Failure fstatFailures[] = {{"EIO", EIO}, {"ENOMEM", ENOMEM}};
constexpr Failure lineFailures[] = {{"EIO", EIO}, {"ENOTTY", ENOTTY}, {"EINTR", EINTR}};
constexpr Failure setFailures[] = {
    {"EIO", EIO}, {"EINVAL", EINVAL}, {"EINTR", EINTR}, {"not done", 0, Effect::Ignored}};
constexpr Failure sleepFailures[] = {{"EINTR", EINTR}};

constexpr CallRow table[] = {{Call::Open, "open", openFailures},
                             {Call::Close, "close", closeFailures},
                             {Call::Read, "read", readFailures},
                             {Call::ReadFile, "read file", readFileFailures},
                             {Call::WriteFile, "write file", writeFileFailures},
                             {Call::Write, "write", writeFailures},
                             {Call::Ioctl, "ioctl", ioctlFailures},
                             {Call::Poll, "poll", pollFailures},
                             {Call::Flock, "flock", flockFailures},
                             {Call::Fstat, "fstat", fstatFailures},
                             {Call::Tcflush, "tcflush", lineFailures},
                             {Call::Tcgetattr, "tcgetattr", lineFailures},
                             {Call::Tcsetattr, "tcsetattr", setFailures},
                             {Call::Nanosleep, "nanosleep", sleepFailures}};

struct Order {
  bool isCounting = false, lasting = false, struck = false;
  Call call{};
  int number = -1;
  const Failure* failure = nullptr;
  CallCounts seen{};
} order;

/// The failure of this call, or null; sets errno for an error.
const Failure* failureOf(Call call) {
  if (!order.isCounting) return nullptr;
  const int number = order.seen[static_cast<std::size_t>(call)]++;
  if (order.failure == nullptr || call != order.call) return nullptr;
  if (order.lasting ? number < order.number : number != order.number) return nullptr;
  order.struck = true;
  if (order.failure->effect == Effect::Error) errno = order.failure->error;
  return order.failure;
}

}  // namespace

std::span<const CallRow> callTable() { return table; }
void countCalls() {
  order = {};
  order.isCounting = true;
}
void orderFailure(Call call, int number, const Failure& failure, bool lasting) {
  order = {true, lasting, false, call, number, &failure, {}};
}
CallCounts stopFailures() {
  order.isCounting = false;
  return order.seen;
}
bool hasStruck() { return order.struck; }

}  // namespace proof

using proof::Call;
using proof::Failure;

// The names are the linker's, for a wrapped call and for the real one; va_start does begin the list.
// NOLINTBEGIN(bugprone-reserved-identifier,clang-analyzer-valist.Uninitialized)
extern "C" {

int __real_open(const char* path, int flags, ...);
int __wrap_open(const char* path, int flags, ...) {
  if (proof::failureOf(Call::Open) != nullptr) return -1;
  if ((flags & O_CREAT) == 0) return __real_open(path, flags);
  va_list arguments;
  va_start(arguments, flags);
  const auto mode = va_arg(arguments, mode_t);
  va_end(arguments);
  return __real_open(path, flags, mode);
}

int __real_close(int file);
int __wrap_close(int file) {
  const Failure* failure = proof::failureOf(Call::Close);
  const int error = errno;
  const int result = __real_close(file);  // the system gives the number back even when it reports an error
  if (failure == nullptr) return result;
  errno = error;
  return -1;
}

ssize_t __real_read(int file, void* buffer, size_t count);
ssize_t __wrap_read(int file, void* buffer, size_t count) {
  const Failure* failure = proof::failureOf(::isatty(file) == 1 ? Call::Read : Call::ReadFile);
  if (failure == nullptr) return __real_read(file, buffer, count);
  if (failure->effect == Failure::Effect::Short) return __real_read(file, buffer, 1);
  return failure->effect == Failure::Effect::Nothing ? 0 : -1;
}

ssize_t __real_write(int file, const void* buffer, size_t count);
ssize_t __wrap_write(int file, const void* buffer, size_t count) {
  const Failure* failure = proof::failureOf(::isatty(file) == 1 ? Call::Write : Call::WriteFile);
  if (failure == nullptr) return __real_write(file, buffer, count);
  if (failure->effect == Failure::Effect::Short) return __real_write(file, buffer, 1);
  return failure->effect == Failure::Effect::Nothing ? 0 : -1;
}

int __real_ioctl(int file, unsigned long request, ...);
int __wrap_ioctl(int file, unsigned long request, ...) {
  va_list arguments;
  va_start(arguments, request);
  void* const argument = va_arg(arguments, void*);
  va_end(arguments);
  return proof::failureOf(Call::Ioctl) != nullptr ? -1 : __real_ioctl(file, request, argument);
}

int __real_poll(pollfd* files, nfds_t count, int limit);
int __wrap_poll(pollfd* files, nfds_t count, int limit) {
  const Failure* failure = proof::failureOf(Call::Poll);
  if (failure == nullptr) return __real_poll(files, count, limit);
  if (failure->effect == Failure::Effect::Error) return -1;
  files->revents = failure->effect == Failure::Effect::HangUp ? POLLHUP : short{0};
  return failure->effect == Failure::Effect::HangUp ? 1 : 0;
}

int __real_flock(int file, int operation);
int __wrap_flock(int file, int operation) {
  return proof::failureOf(Call::Flock) != nullptr ? -1 : __real_flock(file, operation);
}

int __real_fstat(int file, struct stat* status);
int __wrap_fstat(int file, struct stat* status) {
  return proof::failureOf(Call::Fstat) != nullptr ? -1 : __real_fstat(file, status);
}

int __real_tcflush(int file, int queue);
int __wrap_tcflush(int file, int queue) {
  return proof::failureOf(Call::Tcflush) != nullptr ? -1 : __real_tcflush(file, queue);
}

int __real_tcgetattr(int file, termios* line);
int __wrap_tcgetattr(int file, termios* line) {
  return proof::failureOf(Call::Tcgetattr) != nullptr ? -1 : __real_tcgetattr(file, line);
}

int __real_tcsetattr(int file, int when, const termios* line);
int __wrap_tcsetattr(int file, int when, const termios* line) {
  const Failure* failure = proof::failureOf(Call::Tcsetattr);
  if (failure == nullptr) return __real_tcsetattr(file, when, line);
  return failure->effect == Failure::Effect::Ignored ? 0 : -1;
}

int __real_nanosleep(const timespec* time, timespec* left);
int __wrap_nanosleep(const timespec* time, timespec* left) {
  if (proof::failureOf(Call::Nanosleep) == nullptr) return __real_nanosleep(time, left);
  if (left != nullptr) *left = *time;
  return -1;
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier,clang-analyzer-valist.Uninitialized)
