// Pseudo-terminal over POSIX.
#include "virtual-printer/line/posix/pty.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace virtual_printer {
namespace {

[[noreturn]] void fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

// Without echo and translations: what the host has not set up itself must not come back to the printer.
void setRaw(int descriptor) {
  termios settings{};
  if (::tcgetattr(descriptor, &settings) != 0) fail("tcgetattr on the pseudo-terminal");
  ::cfmakeraw(&settings);
  ::cfsetspeed(&settings, B9600);
  if (::tcsetattr(descriptor, TCSANOW, &settings) != 0) fail("tcsetattr on the pseudo-terminal");
}

}  // namespace

void Pty::connect() {
  master_ = Socket(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  if (!master_.isOpen()) fail("posix_openpt");
  if (::grantpt(master()) != 0) fail("grantpt");
  if (::unlockpt(master()) != 0) fail("unlockpt");
  std::array<char, 128> name{};
  if (const int error = ::ptsname_r(master(), name.data(), name.size()); error != 0)
    throw std::system_error(error, std::generic_category(), "ptsname_r");
  device_ = name.data();
  slave_ = Socket(::open(device_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (!slave_.isOpen()) fail("opening the pseudo-terminal's slave side");
  setRaw(slave());
}

void Pty::hangUp() {
  slave_.close();
  master_.close();
}

void Pty::watch(WatchList& watched) const { watched.push_back({master_.handle()}); }

std::string Pty::read(const WatchList& watched) {
  if (!master_.isOpen() || !sawSomething(watched, master_.handle())) return {};
  return receive(master_).value_or(std::string{});
}

void Pty::write(std::string_view bytes) {
  while (master_.isOpen() && !bytes.empty()) {
    const ssize_t count = ::write(master(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void Pty::rest() {
  int exclusive = 0;
  if (!slave_.isOpen() || ::ioctl(slave(), TIOCGEXCL, &exclusive) != 0 || exclusive == 0) return;
  if (::flock(slave(), LOCK_EX | LOCK_NB) != 0) return;
  ::ioctl(slave(), TIOCNXCL);
  ::flock(slave(), LOCK_UN);
}

}  // namespace virtual_printer
