// A pseudo-terminal: the test holds the master side, the code under test opens the device.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace zentaro::testing {

class PseudoTerminal {
 public:
  PseudoTerminal() : master_(::posix_openpt(O_RDWR | O_NOCTTY)) {
    EXPECT_EQ(::grantpt(master_), 0);
    EXPECT_EQ(::unlockpt(master_), 0);
  }
  ~PseudoTerminal() { vanish(); }
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  std::string device() const { return ::ptsname(master_); }
  void send(const std::string& bytes) const {
    EXPECT_EQ(::write(master_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  /// What has come, at most 4096 bytes; waits for the first byte, but not for ever.
  std::string receive() const {
    pollfd state{master_, POLLIN, 0};
    if (::poll(&state, 1, 5000) != 1) return {};
    std::string bytes(4096, '\0');
    const ssize_t count = ::read(master_, bytes.data(), bytes.size());
    bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return bytes;
  }
  /// The settings of the device, which both sides share.
  termios settings() const {
    termios line{};
    EXPECT_EQ(::tcgetattr(master_, &line), 0);
    return line;
  }
  void changeSettings(const termios& line) const { EXPECT_EQ(::tcsetattr(master_, TCSANOW, &line), 0); }
  void vanish() {
    if (master_ >= 0) ::close(master_);
    master_ = -1;
  }

 private:
  int master_;
};

}  // namespace zentaro::testing
