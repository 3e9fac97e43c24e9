// The main loop.
#include "shell/program.h"

#include <poll.h>
#include <sys/signalfd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <optional>

#include "line/engine.h"
#include "line/link.h"
#include "line/pty.h"
#include "paper/text.h"

namespace printer {
namespace {

using namespace std::chrono_literals;

constexpr auto idleCheck = 1000ms;

Moment currentMoment() {
  const auto steady = std::chrono::steady_clock::now().time_since_epoch();
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  return {std::chrono::duration_cast<std::chrono::milliseconds>(steady),
          LocalTime{std::chrono::seconds{now + local.tm_gmtoff}}};
}

class RollOnScreen final : public PaperWatcher {
 public:
  void printed(const Sheet&, const Line& line) override {
    std::printf("%s\n", textLine(line).c_str());
    std::fflush(stdout);
  }
  void finished(const std::deque<Sheet>&) override {}
};

Descriptor watchSignals() {
  ::signal(SIGPIPE, SIG_IGN);
  sigset_t ending;
  sigemptyset(&ending);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&ending, number);
  ::sigprocmask(SIG_BLOCK, &ending, nullptr);
  return Descriptor{::signalfd(-1, &ending, SFD_CLOEXEC)};
}

int waitTime(const Engine& engine) {
  const auto next = engine.nextDue();
  if (!next) return static_cast<int>(idleCheck.count());
  return static_cast<int>(std::clamp(*next - currentMoment().steady, 0ms, idleCheck).count());
}

}  // namespace

int runProgram(const Options& options) {
  const Descriptor signals = watchSignals();
  std::optional<Link> link;
  if (!options.link.empty()) link.emplace(options.link);
  Pty pty;
  if (link) link->pointTo(pty.device());
  RollOnScreen screen;
  Device device{options.identity, {}, [](const Books&) {}};
  device.roll().watch(screen);
  Engine engine{device};
  std::fprintf(stderr, "ready: %s\n", link ? options.link.c_str() : pty.device().c_str());
  for (;;) {
    std::array<pollfd, 2> watched{{{signals.get(), POLLIN, 0}, {pty.descriptor(), POLLIN, 0}}};
    const int events = ::poll(watched.data(), watched.size(), waitTime(engine));
    if (watched[0].revents != 0) return 0;
    if (watched[1].revents != 0) engine.receive(pty.read(), currentMoment());
    for (const Output& output : engine.due(currentMoment().steady)) pty.write(output.bytes);
    if (events == 0) pty.liftStaleExclusiveUse();
  }
}

}  // namespace printer
