// The serial services on a real pseudo-terminal.
#include <sys/ioctl.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include "platform/open_line.h"
#include "platform/posix/line_status.h"
#include "platform/pseudo_terminal.h"
#include "platform/services.h"
#include "support/scratch.h"

namespace zentaro::testing::serial_line_test {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

class SerialLine : public OpenLine<PseudoTerminal> {
 protected:
  bool configure(const std::string& text) {
    LineSettings line;
    return serial.GetCommState(handle, line) && serial.BuildCommDCBA(text, line) &&
           serial.SetCommState(handle, line);
  }
  void makeRaw() { ASSERT_TRUE(configure("baud=9600 parity=N data=8 stop=1")); }
  void setTimeouts(std::uint32_t readConstant, std::uint32_t writeConstant) {
    EXPECT_TRUE(serial.SetCommTimeouts(handle, {0xFFFFFFFF, 0, readConstant, 0, writeConstant}));
  }
};

TEST_F(SerialLine, IsMadeRawAndKeepsEveryOtherSetting) {
  termios before = printer.settings();
  before.c_iflag |= IXON | IXOFF | ICRNL | ISTRIP | IUTF8;
  before.c_cflag |= CSTOPB | CRTSCTS | HUPCL;
  before.c_lflag |= ECHO | ICANON | TOSTOP;
  before.c_cc[VERASE] = 0x15;
  printer.changeSettings(before);

  makeRaw();
  const termios after = printer.settings();
  EXPECT_EQ(after.c_iflag & ~tcflag_t{IUTF8}, tcflag_t{IGNBRK}) << "a break must not become a NUL";
  EXPECT_EQ(after.c_oflag & OPOST, 0U);
  EXPECT_EQ(after.c_lflag & (ECHO | ECHONL | ICANON | ISIG | IEXTEN), 0U);
  EXPECT_EQ(after.c_cflag & (CSIZE | PARENB | CSTOPB | CRTSCTS | CLOCAL | CREAD),
            tcflag_t{CS8 | CLOCAL | CREAD});
  EXPECT_EQ(::cfgetospeed(&after), speed_t{B9600});
  EXPECT_EQ(after.c_cc[VMIN] + after.c_cc[VTIME], 0);
  EXPECT_NE(after.c_iflag & IUTF8, 0U);
  EXPECT_NE(after.c_lflag & TOSTOP, 0U);
  EXPECT_NE(after.c_cflag & HUPCL, 0U);
  EXPECT_EQ(after.c_cc[VERASE], 0x15);

  serial.CloseHandle(handle);
  EXPECT_EQ(printer.settings().c_lflag, after.c_lflag) << "closing restores nothing";
}

TEST_F(SerialLine, SettingsThatTheDeviceDoesNotTakeAreAnError) {
  EXPECT_FALSE(configure("baud=9600 parity=E data=7 stop=1")) << "a pseudo-terminal always has eight bits";
  EXPECT_EQ(serial.GetLastError(), std::uint32_t{EINVAL});
  LineSettings line;
  EXPECT_FALSE(serial.BuildCommDCBA("baud=fast", line));
  EXPECT_EQ(serial.GetLastError(), std::uint32_t{EINVAL});
}

TEST_F(SerialLine, IsHeldByOneOpeningOnly) {
  EXPECT_EQ(open(printer.device()), invalidSerialHandle);
  EXPECT_EQ(serial.GetLastError(), std::uint32_t{EBUSY});
  const pid_t child = ::fork();
  if (child == 0) ::_exit(open(printer.device()) == invalidSerialHandle ? int(serial.GetLastError()) : 0);
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(WEXITSTATUS(status), EBUSY) << "in another process";
  const pid_t tidy = ::fork();
  if (tidy == 0) ::_exit(serial.CloseHandle(handle) ? 0 : 1);
  ASSERT_EQ(::waitpid(tidy, &status, 0), tidy);
  EXPECT_EQ(open(printer.device()), invalidSerialHandle) << "what a child closes stays the parent's";

  const pid_t heir = ::fork();  // has the descriptor too
  if (heir == 0) {
    ::alarm(60);
    ::pause();
  }
  const SerialHandle closed = handle;
  EXPECT_TRUE(serial.CloseHandle(handle));
  handle = open(printer.device());
  ::kill(heir, SIGKILL);
  ::waitpid(heir, nullptr, 0);
  EXPECT_NE(handle, invalidSerialHandle);
  EXPECT_NE(handle, closed) << "a closed handle must never reach the next device";
  EXPECT_FALSE(serial.CloseHandle(closed));
  EXPECT_EQ(serial.GetLastError(), std::uint32_t{EBADF});
}

TEST_F(SerialLine, IsMarkedExclusiveUnlessItIsAPseudoTerminal) {
  const auto marked = [] {
    int count = 0;
    for (int descriptor = 3; descriptor < 64; ++descriptor) {
      int isMarked = 0;
      if (::ioctl(descriptor, TIOCGEXCL, &isMarked) == 0) count += isMarked;
    }
    return count;
  };
  EXPECT_EQ(marked(), 0) << "it would stay so after a crash";
  const SerialHandle other = open("/dev/ptmx");  // a terminal device of another kind
  EXPECT_EQ(marked(), 1);
  EXPECT_TRUE(serial.CloseHandle(other));
}

TEST_F(SerialLine, WhatIsNoSerialDeviceFails) {
  for (const char* name : {"/none/tty", "tty", ""}) {
    EXPECT_EQ(open(name), invalidSerialHandle) << name;
    EXPECT_EQ(serial.GetLastError(), std::uint32_t{ENOENT}) << name;
  }
  std::thread([&] { EXPECT_EQ(serial.GetLastError(), 0U) << "each thread has its own"; }).join();
  EXPECT_EQ(serial.FormatMessageA(ENOENT), "No such file or directory");
  EXPECT_EQ(serial.FormatMessageA(99999), "");

  const Scratch folder;
  folder.write("file", "");
  EXPECT_EQ(open(folder / "file"), invalidSerialHandle) << "a frame must not be written into a file";
  EXPECT_EQ(serial.GetLastError(), std::uint32_t{ENOTTY});
}

TEST_F(SerialLine, ReadGivesWhatIsThereAndEveryByteValue) {
  makeRaw();
  std::string all(256, '\0');
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<char>(i);
  printer.send(all);
  serial.WaitForInput(handle, 5s);
  EXPECT_EQ(waiting(), 256);
  EXPECT_EQ(read(10), all.substr(0, 10));
  EXPECT_EQ(read(4096), all.substr(10));
  setTimeouts(40, 5000);
  struct sigaction quiet {};
  quiet.sa_handler = [](int) {};  // without SA_RESTART
  ::sigaction(SIGALRM, &quiet, nullptr);
  const itimerval soon{{0, 0}, {0, 5000}};
  ::setitimer(ITIMER_REAL, &soon, nullptr);
  const auto start = steady_clock::now();
  EXPECT_EQ(read(10), "") << "the time is over, and a signal in it is no error";
  EXPECT_GE(steady_clock::now() - start, 40ms);

  std::uint32_t written = 0;
  EXPECT_TRUE(write(all, written));
  EXPECT_EQ(printer.receive(), all);
}

TEST_F(SerialLine, WhatWasNotTakenIsDiscardedWhenItCloses) {
  makeRaw();
  setTimeouts(0, 20);
  std::uint32_t written = 0;
  EXPECT_TRUE(write(std::string(1000000, 'x'), written));
  EXPECT_GT(written, 4096U) << "more than the far side has taken into its own buffer";
  EXPECT_TRUE(serial.CloseHandle(handle));
  std::size_t received = 0, part = 0;
  while ((part = printer.receive().size()) > 0) received += part;
  EXPECT_LE(received, 4096U) << "what was told as lost must not be carried out later";
}

TEST_F(SerialLine, PurgeDiscardsWhatHasArrived) {
  makeRaw();
  printer.send("late answer");
  serial.WaitForInput(handle, 5s);
  EXPECT_TRUE(serial.PurgeComm(handle, 0x0F));
  EXPECT_EQ(waiting(), 0);
}

TEST_F(SerialLine, LongWriteWaitsForASlowReader) {
  makeRaw();
  std::string sent(300000, 'a'), received;
  for (std::size_t i = 0; i < sent.size(); ++i) sent[i] = static_cast<char>('a' + i % 23);
  std::thread reader([&] {
    while (received.size() < sent.size()) {
      const std::string part = printer.receive();
      if (part.empty()) return;
      received += part;
    }
  });
  std::uint32_t written = 0;
  EXPECT_TRUE(write(sent, written));
  if (written < sent.size()) printer.vanish();  // the reader would wait for ever
  reader.join();
  EXPECT_EQ(written, sent.size());
  EXPECT_EQ(received, sent);
}

TEST_F(SerialLine, WriteThatNobodyReadsEndsWhenItsTimeIsOver) {
  makeRaw();
  setTimeouts(0, 20);
  std::uint32_t written = 0;
  EXPECT_TRUE(write(std::string(1000000, 'x'), written));
  EXPECT_LT(written, 1000000U);
  EXPECT_GT(written, 0U);
  // The kernel may make room behind a write, when a busy machine lets it.
  while (write(std::string(1000, 'x'), written) && written > 0) {
  }
  EXPECT_TRUE(serial.SetCommTimeouts(handle, {0xFFFFFFFF, 0, 0, 2, 0}));
  const auto start = steady_clock::now();
  EXPECT_TRUE(write(std::string(20, 'x'), written));
  EXPECT_EQ(written, 0U);
  EXPECT_GE(steady_clock::now() - start, 40ms) << "two for each byte";
}

TEST_F(SerialLine, VanishedDeviceIsAnErrorOfEveryCallAndNeverASpin) {
  makeRaw();
  printer.vanish();
  std::uint32_t count = 0;
  char byte = 0;
  const auto descriptors = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  const auto before = descriptors();
  EXPECT_EQ(waiting(), -1);
  EXPECT_EQ(descriptors(), before - 1) << "while it is held, an adapter that comes back gets another name";
  EXPECT_EQ(serial.GetLastError(), std::uint32_t{EIO});
  EXPECT_FALSE(serial.ReadFile(handle, &byte, 1, count, overlapped));
  EXPECT_EQ(serial.GetLastError(), std::uint32_t{EIO});
  EXPECT_FALSE(write("x", count));
  EXPECT_EQ(serial.GetLastError(), std::uint32_t{EIO});

  for (const SerialHandle gone : {handle, invalidSerialHandle}) {
    const auto start = steady_clock::now();
    serial.WaitForInput(gone, 30ms);
    EXPECT_GE(steady_clock::now() - start, 30ms) << "a poll loop around it would spin";
  }
  EXPECT_TRUE(serial.CloseHandle(handle));
}

TEST(LineErrors, AreTheCountersThatChanged) {
  const auto flags = [](const posix::LineCounters& now) {
    EXPECT_EQ(posix::lineErrorFlags(now, now), 0U);
    return posix::lineErrorFlags({}, now);
  };
  EXPECT_EQ(flags({.overrun = 1}), 2U);
  EXPECT_EQ(flags({.parity = 2}), 4U);
  EXPECT_EQ(flags({.frame = 1}), 8U);
  EXPECT_EQ(flags({.breaks = 1}), 0x10U);
  EXPECT_EQ(flags({.overrun = 1, .bufferOverrun = 1}), 3U);
}

}  // namespace zentaro::testing::serial_line_test
