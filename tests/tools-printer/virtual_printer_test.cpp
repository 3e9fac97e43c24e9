// A printer that a command starts never waits for a reader, stands apart from the terminal, and
// leaves nothing behind.
#include "tools/connection/virtual_printer.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

namespace zentaro::tools::virtual_printer_test {

namespace fs = std::filesystem;

class StartedPrinter : public ::testing::Test {
 protected:
  StartedPrinter() {
    ::setenv("PATH", (std::string(ZENTARO_PROGRAMS) + ":" + std::getenv("PATH")).c_str(), 1);
  }

  static bool isGone(const fs::path& folder) {
    for (int look = 0; look < 1000 && fs::exists(folder); ++look)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return !fs::exists(folder);
  }
};

TEST_F(StartedPrinter, SaysMoreThanAnybodyReads) {
  fs::path folder;
  {
    const VirtualPrinter printer({"--fault", "bad-checksum always"});
    folder = fs::path(printer.device()).parent_path();
    const int line = ::open(printer.device().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    std::array<char, 256> answer{};
    for (int request = 0; request < 4000; ++request) {
      ASSERT_EQ(::write(line,
                        "\x02\"8\x03"
                        "005F",
                        8),
                8);
      ASSERT_GT(::read(line, answer.data(), answer.size()), 0) << request;
    }
    ::close(line);
    EXPECT_TRUE(fs::exists(folder / "paper.txt"));
  }
  EXPECT_FALSE(fs::exists(folder));
}

TEST_F(StartedPrinter, EndsWithItsCommandHoweverThatEnds) {
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  const pid_t command = ::fork();
  if (command == 0) {
    ::setpgid(0, 0);
    ::signal(SIGINT, [](int) {});
    const VirtualPrinter printer;
    const std::string device = printer.device() + "\n";
    ::kill(0, SIGINT);  // as Ctrl-C does to the group on the terminal
    if (::write(ends[1], device.data(), device.size()) > 0) ::pause();
    ::_exit(1);
  }
  ::close(ends[1]);
  std::array<char, 256> name{};
  ASSERT_GT(::read(ends[0], name.data(), name.size()), 0);
  const fs::path folder = fs::path(name.data()).parent_path();
  EXPECT_TRUE(fs::exists(folder / "printer")) << "Ctrl-C did not reach it";
  ::kill(command, SIGKILL);
  ::waitpid(command, nullptr, 0);
  EXPECT_TRUE(isGone(folder));
}

}  // namespace zentaro::tools::virtual_printer_test
