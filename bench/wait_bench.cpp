// What waiting costs: the processor time of an exchange that times out, as a share of the time that it takes,
// and the time of an exchange that is answered, as a multiple of the same exchange over bare system calls.
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <ctime>
#include <iomanip>
#include <iostream>

#include "common/connection.h"
#include "platform/host.h"

namespace {

using namespace zentaro;
using Clock = std::chrono::steady_clock;

double seconds(Clock::duration time) { return std::chrono::duration<double>(time).count(); }

template <class Work>
double processorShare(const Work& work) {
  const auto start = Clock::now();
  const std::clock_t used = std::clock();
  work();
  return static_cast<double>(std::clock() - used) / CLOCKS_PER_SEC / seconds(Clock::now() - start);
}

template <class Work>
double secondsOf(const Work& work) {
  const auto start = Clock::now();
  for (int times = 0; times < 2000; ++times) work();
  return seconds(Clock::now() - start);
}

void showShares() {
  tools::Connection deaf(tools::PortOptions{.port = {}, .device = {}, .timeout = 3},
                         {"--fault", "lose-command always"});
  const auto timeOut = [&] { deaf.printer().Subtotal(); };
  const double alone = processorShare(timeOut);
  setYieldCallback([] {});
  const double withCallback = processorShare(timeOut);
  setYieldCallback({});
  std::cout << "processor time of a time-out, share of its duration\n"
            << "  without a callback  " << alone * 100 << " %\n  with a callback     " << withCallback * 100
            << " %\n";
}

// A status request over bare system calls, until the checksum behind the ETX is there.
void bareExchange(int device) {
  constexpr std::string_view request =
      "\x02\"8\x1CN\x03"
      "00C9";
  std::string answer;
  if (::write(device, request.data(), request.size()) < 0) return;
  for (std::size_t etx = std::string::npos; etx == std::string::npos || answer.size() < etx + 5;
       etx = answer.find('\x03')) {
    pollfd ready{device, POLLIN, 0};
    ::poll(&ready, 1, 1000);
    std::array<char, 4096> buffer;
    answer.append(buffer.data(), static_cast<std::size_t>(
                                     std::max<ssize_t>(0, ::read(device, buffer.data(), buffer.size()))));
  }
}

void showMultiple() {
  double reference = 0;
  {
    tools::VirtualPrinter printer;
    const int device = ::open(printer.device().c_str(), O_RDWR | O_NOCTTY);
    reference = secondsOf([&] { bareExchange(device); });
    ::close(device);
  }
  tools::Connection connection({});
  const double library = secondsOf([&] { connection.printer().StatusIF(u"N"); });
  std::cout << "an answered exchange, multiple of bare system calls\n  " << library / reference << "\n";
}

}  // namespace

int main() {
  std::cout << std::fixed << std::setprecision(3);
  showShares();
  showMultiple();
}
