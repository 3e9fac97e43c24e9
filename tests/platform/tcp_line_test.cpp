// The serial services on real connections.

#include <cerrno>
#include <chrono>
#include <thread>

#include "platform/open_line.h"
#include "platform/tcp_name.h"
#include "platform/tcp_peer.h"

namespace zentaro::testing::tcp_line_test {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

class TcpLineTest : public OpenLine<TcpPeer> {
 protected:
  TcpLineTest() : OpenLine(4096) { printer.accept(); }

  /// Opens again while the printer does something.
  template <class Act>
  void reopen(Act act) {
    EXPECT_TRUE(serial.CloseHandle(handle));
    std::thread other([&] {
      printer.accept();
      act();
    });
    handle = open(printer.device());
    other.join();
  }
};

TEST_F(TcpLineTest, IsConfiguredLikeADeviceAndMovesEveryByteValue) {
  LineSettings line;
  EXPECT_TRUE(serial.SetupComm(handle, 1024, 1024) && serial.PurgeComm(handle, 0x0F));
  EXPECT_TRUE(serial.SetCommTimeouts(handle, {0xFFFFFFFF, 0, 40, 1000, 0}));
  EXPECT_TRUE(serial.GetCommState(handle, line));
  EXPECT_TRUE(serial.BuildCommDCBA("baud=9600 parity=N data=8 stop=1", line));
  EXPECT_TRUE(serial.SetCommState(handle, line));
  std::string all(256, '\0');
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<char>(i);
  printer.send(all);
  serial.WaitForInput(handle, 5s);
  EXPECT_EQ(waiting(), 256);
  EXPECT_EQ(read(10), all.substr(0, 10));
  EXPECT_EQ(read(4096), all.substr(10));
  EXPECT_EQ(read(10), "") << "the time is over";
  std::uint32_t written = 0;
  EXPECT_TRUE(write(all, written));
  EXPECT_EQ(written, 256U);
  EXPECT_EQ(printer.receive(256), all);
  printer.send("late answer");
  serial.WaitForInput(handle, 5s);
  EXPECT_TRUE(serial.PurgeComm(handle, 0x0F));
  EXPECT_EQ(waiting(), 0);
}

// The box goes on from its cable: what it still had, and what the printer still says.
TEST_F(TcpLineTest, BeginsWithASilentLine) {
  reopen([&] {
    for (int part = 0; part < 4; ++part) {
      printer.send("late answer");
      std::this_thread::sleep_for(50ms);
    }
  });
  ASSERT_NE(handle, invalidSerialHandle);
  EXPECT_EQ(waiting(), 0);
}

// A command that was told as lost must not be carried out when the network is there again.
TEST_F(TcpLineTest, DeliversNothingMoreOnceItIsClosed) {
  EXPECT_TRUE(serial.SetCommTimeouts(handle, {0xFFFFFFFF, 0, 0, 0, 50}));
  std::uint32_t written = 0;
  EXPECT_TRUE(write(std::string(20'000'000, 'x'), written));
  ASSERT_GT(written, 100'000U) << "taken by the system, not read by the printer";
  ASSERT_LT(written, 20'000'000U) << "the time was over";
  EXPECT_TRUE(serial.CloseHandle(handle));
  EXPECT_LT(printer.receive(written).size(), written / 2);
}

TEST_F(TcpLineTest, AnEndedConnectionIsAnErrorOfEveryCallAndNeverASpin) {
  printer.send("x");
  serial.WaitForInput(handle, 5s);
  printer.hangUp();
  EXPECT_EQ(read(1), "x") << "what came before the end";
  serial.WaitForInput(handle, 20ms);
  std::uint32_t count = 0;
  char byte = 0;
  const auto error = [&] { return serial.FormatMessageA(serial.GetLastError()); };
  const std::string reset = "Connection reset by peer";
  EXPECT_FALSE(write("x", count));
  EXPECT_EQ(error(), reset);
  EXPECT_EQ(waiting(), -1);
  EXPECT_EQ(error(), reset);
  EXPECT_FALSE(serial.ReadFile(handle, &byte, 1, count, overlapped));
  EXPECT_EQ(error(), reset);
  EXPECT_FALSE(serial.PurgeComm(handle, 0x0F));
  const SerialHandle closed = handle;
  for (const bool isOpen : {true, false}) {
    const auto start = steady_clock::now();
    serial.WaitForInput(handle, 30ms);
    EXPECT_GE(steady_clock::now() - start, 30ms) << "a poll loop around it would spin";
    EXPECT_EQ(serial.CloseHandle(handle), isOpen);
  }
  EXPECT_EQ(serial.GetLastError(), std::uint32_t{EBADF});
  handle = open(printer.device());
  EXPECT_NE(handle, closed) << "a closed handle must never reach the next line";
}

TEST_F(TcpLineTest, WhatCannotBeOpenedSaysWhy) {
  const TcpPeer busy;  // takes nobody: the system makes the connection, and no more once its queue is full
  const auto reason = [&](const std::string& device) {
    const SerialHandle opened = open(device);
    return opened == invalidSerialHandle ? serial.FormatMessageA(serial.GetLastError()) : "open";
  };
  std::string refused;
  {
    const TcpPeer gone;
    refused = gone.device();
  }
  EXPECT_EQ(reason(refused), "Connection refused");
  EXPECT_EQ(reason("tcp://no..host:4001"), "No such device or address");
  for (const char* name :
       {"tcp://127.0.0.1", "tcp://127.0.0.1:0", "tcp://:4001", "tcp://::1:4001", "tcp://a/b:1"})
    EXPECT_EQ(reason(name), "Invalid argument") << name;
  std::string full;
  for (int host = 0; host < 4 && full.empty(); ++host)
    if (const std::string said = reason(busy.device()); said != "open") full = said;
  EXPECT_EQ(full, "Connection timed out");
  EXPECT_TRUE(serial.CloseHandle(handle));
  std::thread other([&] {
    printer.accept();
    printer.hangUp();
  });
  EXPECT_EQ(reason(printer.device()), "Device or resource busy") << "it has another host";
  other.join();
  EXPECT_EQ(reason("/none/tty"), "No such file or directory") << "a device of the system";
}

TEST(TcpName, HasHostAndPort) {
  const auto parsed = [](const char* text) {
    const auto name = parseTcpName(text);
    return name ? name->host + " " + name->port : "";
  };
  EXPECT_EQ(parsed("tcp://caja-1.local:4001"), "caja-1.local 4001");
  EXPECT_EQ(parsed("tcp://[::1]:65535"), "::1 65535");
  for (const char* wrong : {"tcp://a:65536", "tcp://a:+1", "tcp://a:", "tcp://[]:1", "a:1", "/dev/tcp"})
    EXPECT_EQ(parsed(wrong), "") << wrong;
}

}  // namespace zentaro::testing::tcp_line_test
