// The answering process, and the bare client.
#include "line.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include "measure.h"

namespace bench {
namespace {

int openMaster(std::string& device) {
  const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (master < 0 || ::grantpt(master) < 0 || ::unlockpt(master) < 0)
    throw std::runtime_error("there is no pseudo-terminal to be had");
  termios line{};
  ::tcgetattr(master, &line);
  ::cfmakeraw(&line);
  ::tcsetattr(master, TCSANOW, &line);
  device = ::ptsname(master);
  return master;
}

std::string printerAnswer(const std::string& command) {
  std::string answer{'\x02', command[1], command[2]};
  answer +=
      "\x1C"
      "0600\x1C"
      "3080\x1C"
      "00002900\x03";
  unsigned sum = 0;
  for (const char c : answer) sum += static_cast<unsigned char>(c);
  for (int shift = 12; shift >= 0; shift -= 4) answer += "0123456789ABCDEF"[(sum >> shift) & 15];
  return answer;
}

void addCrc(std::string& frame) {
  unsigned crc = 0xFFFF;
  for (const char c : frame) {
    crc ^= static_cast<unsigned char>(c);
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) != 0 ? (crc >> 1) ^ 0xA001 : crc >> 1;
  }
  frame += static_cast<char>(crc & 0xFF);
  frame += static_cast<char>(crc >> 8);
}

// Function 23 writes 12 registers and reads 10: as many bytes each way as an invoice line of the printer.
constexpr std::size_t modbusRequest = 13 + 2 * 12;
std::string modbusAnswer(const std::string& request) {
  std::string answer{request[0], request[1], 20};
  answer.append(20, '\0');
  addCrc(answer);
  return answer;
}

bool isComplete(const std::string& command) {
  const std::size_t etx = command.find('\x03');
  return etx != std::string::npos && command.size() >= etx + 5;
}

void sleepUntil(double moment) {
  timespec until{static_cast<time_t>(moment), 0};
  until.tv_nsec = static_cast<long>((moment - static_cast<double>(until.tv_sec)) * 1e9);
  ::clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr);
}

[[noreturn]] void serve(int printer, int modbus, int bitsPerSecond, double* answeredAt) {
  std::array<pollfd, 2> lines{{{printer, POLLIN, 0}, {modbus, POLLIN, 0}}};
  std::array<std::string, 2> pending;
  std::array<char, 4096> buffer;
  for (;;) {
    ::poll(lines.data(), lines.size(), -1);
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if ((lines[i].revents & POLLIN) == 0) continue;
      const double begin = wallSeconds();
      const ssize_t got = ::read(lines[i].fd, buffer.data(), buffer.size());
      if (got > 0) pending[i].append(buffer.data(), static_cast<std::size_t>(got));
      if (i == 0 ? !isComplete(pending[0]) : pending[1].size() < modbusRequest) continue;
      const std::string answer = i == 0 ? printerAnswer(pending[i]) : modbusAnswer(pending[i]);
      const auto bytes = static_cast<double>(pending[i].size() + answer.size());
      if (bitsPerSecond > 0) sleepUntil(begin + bytes * 10 / bitsPerSecond);
      *answeredAt = wallSeconds();
      if (::write(lines[i].fd, answer.data(), answer.size()) < 0) ::_exit(1);
      pending[i].clear();
    }
  }
}

}  // namespace

Responder::Responder(int bitsPerSecond)
    : answeredAt_(static_cast<double*>(
          ::mmap(nullptr, sizeof(double), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))) {
  const int printer = openMaster(printer_), modbus = openMaster(modbus_);
  process_ = ::fork();
  if (process_ == 0) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    // The device stays open here, so that the line does not hang up between two clients.
    for (const std::string& device : {printer_, modbus_}) ::open(device.c_str(), O_RDWR | O_NOCTTY);
    serve(printer, modbus, bitsPerSecond, answeredAt_);
  }
  ::close(printer);
  ::close(modbus);
}

Responder::~Responder() {
  ::kill(process_, SIGKILL);
  ::waitpid(process_, nullptr, 0);
  ::munmap(answeredAt_, sizeof(double));
}

SilentLine::SilentLine() : master_(openMaster(device_)) {}
SilentLine::~SilentLine() { ::close(master_); }

BareClient::BareClient(const std::string& device)
    : device_(::open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)) {}
BareClient::~BareClient() { ::close(device_); }

void BareClient::exchange() {
  if (::write(device_, itemCommand.data(), itemCommand.size()) < 0) return;
  std::string answer;
  while (!isComplete(answer)) {
    pollfd ready{device_, POLLIN, 0};
    if (::poll(&ready, 1, 1000) <= 0) return;
    std::array<char, 4096> buffer;
    const ssize_t got = ::read(device_, buffer.data(), buffer.size());
    if (got > 0) answer.append(buffer.data(), static_cast<std::size_t>(got));
  }
}

}  // namespace bench
