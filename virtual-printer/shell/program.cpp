// The main loop.
#include "shell/program.h"

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <exception>
#include <optional>

#include "line/link.h"
#include "line/pty.h"
#include "shell/control_socket.h"
#include "shell/log.h"
#include "shell/paper_watchers.h"
#include "shell/state_file.h"
#include "web/browser.h"
#include "web/web_page.h"

namespace printer {
namespace {

using namespace std::chrono_literals;

constexpr auto idleCheck = 1000ms;

std::chrono::milliseconds steadyTime() {
  static const auto begin = std::chrono::steady_clock::now();
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin);
}

Moment currentMoment() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  return {steadyTime(), LocalTime{std::chrono::seconds{now + local.tm_gmtoff}}};
}

// The ending signals become readable. A background printer that looks at a terminal's input, or writes where
// nobody reads, gets an error instead of a signal.
Descriptor watchSignals() {
  ::signal(SIGPIPE, SIG_IGN);
  ::signal(SIGTTIN, SIG_IGN);
  sigset_t ending;
  sigemptyset(&ending);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&ending, number);
  ::sigprocmask(SIG_BLOCK, &ending, nullptr);
  return Descriptor{::signalfd(-1, &ending, SFD_CLOEXEC)};
}

class Program {
 public:
  explicit Program(const Options& options);
  int run();

 private:
  void save(const Books& books) const;
  void note(const Moment& moment, const Event& event);
  void connect();
  void carry(const Output& output);
  void readStandardInput();
  std::string reply(const std::string& line);
  int waitTime() const;

  const Options& options_;
  Descriptor signals_;
  std::optional<StateFile> state_;
  std::optional<LogFile> log_;
  std::optional<PaperFile> paper_;
  std::optional<Link> link_;
  std::optional<ControlSocket> control_;
  RollOnScreen screen_;
  FaultSet faults_;
  Device device_;
  Engine engine_;
  Pty pty_;
  std::optional<WebPage> web_;
  LineReader inputLines_;
  bool isInputOpen_ = true;
  bool isQuitting_ = false;
};

template <class Part>
void emplaceIf(std::optional<Part>& part, const std::string& path) {
  if (!path.empty()) part.emplace(path);
}

Program::Program(const Options& options)
    : options_{options},
      signals_{watchSignals()},
      state_{options.state.empty() ? std::nullopt : std::optional<StateFile>{std::in_place, options.state}},
      faults_{options.seed},
      device_{options.identity, state_ ? state_->load() : Books{},
              [this](const Books& books) { save(books); }},
      engine_{device_, faults_, options.speed,
              [this](const Moment& at, const Event& event) { note(at, event); }} {
  emplaceIf(log_, options.log);
  emplaceIf(paper_, options.paper);
  emplaceIf(link_, options.link);
  emplaceIf(control_, options.control);
  faults_.add(options.faults);
  if (!options.isQuiet) device_.roll().watch(screen_);
  if (paper_) device_.roll().watch(*paper_);
  if (!options.web) return;
  web_.emplace(*options.web, options.identity, [this](const std::string& line) { return reply(line); });
  device_.roll().watch(web_->paper());
}

void Program::save(const Books& books) const {
  if (!state_) return;
  try {
    state_->save(books);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zentaro-printer: --state: %s; the fiscal memory on disk is behind\n", error.what());
  }
}

void Program::note(const Moment& moment, const Event& event) {
  if (log_) log_->write(moment, event);
  if (web_) web_->happened(moment, event);
  if (event.kind == EventKind::fault) std::fprintf(stderr, "fault: %s\n", event.name.c_str());
  if (event.kind == EventKind::power) std::fprintf(stderr, "power: %s\n", event.name.c_str());
}

void Program::connect() {
  pty_.connect();
  if (link_) link_->pointTo(pty_.device());
  const std::string& device = link_ ? options_.link : pty_.device();
  if (web_) web_->lineIs(device);
  std::fprintf(stderr, "ready: %s\n", device.c_str());
}

void Program::carry(const Output& output) {
  switch (output.kind) {
    case Output::Kind::bytes:
      pty_.write(output.bytes);
      if (web_) web_->sent(currentMoment(), output);
      break;
    case Output::Kind::hangUp:
      pty_.hangUp();
      if (web_) web_->lineIs({});
      break;
    case Output::Kind::reconnect: connect(); break;
    case Output::Kind::powerOn: break;
  }
}

std::string Program::reply(const std::string& line) {
  const ControlReply reply = control(line, faults_, device_.works());
  isQuitting_ = isQuitting_ || reply.quit;
  return reply.text;
}

void Program::readStandardInput() {
  std::array<char, 1024> buffer{};
  const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
  isInputOpen_ = count > 0;
  if (!isInputOpen_) return;
  for (const std::string& line : inputLines_.feed({buffer.data(), static_cast<std::size_t>(count)}))
    std::fprintf(stderr, "%s\n", reply(line).c_str());
}

int Program::waitTime() const {
  const auto next = engine_.nextDue();
  if (!next) return static_cast<int>(idleCheck.count());
  return static_cast<int>(std::clamp(*next - steadyTime(), 0ms, idleCheck).count());
}

int Program::run() {
  device_.start(currentMoment().local);
  if (web_) std::fprintf(stderr, "page: %s\n", web_->url().c_str());
  connect();
  if (web_ && options_.opensBrowser) openInBrowser(web_->url());
  while (!isQuitting_) {
    // A negative descriptor is passed over by poll.
    std::vector<pollfd> watched{{signals_.get(), POLLIN, 0},
                                {pty_.descriptor(), POLLIN, 0},
                                {isInputOpen_ ? STDIN_FILENO : -1, POLLIN, 0}};
    if (control_) control_->watch(watched);
    if (web_) web_->watch(watched);
    const int seen = ::poll(watched.data(), watched.size(), waitTime());
    if (watched[0].revents != 0) break;
    if (watched[1].revents != 0) engine_.receive(pty_.read(), currentMoment());
    if (watched[2].revents != 0) readStandardInput();
    if (control_) control_->serve(watched, [this](const std::string& line) { return reply(line); });
    if (web_) web_->serve();
    for (const Output& output : engine_.due(currentMoment())) carry(output);
    if (web_) web_->show(currentMoment(), device_.works(), faults_);
    if (seen == 0) pty_.liftStaleExclusiveUse();
  }
  return 0;
}

}  // namespace

int runProgram(const Options& options) { return Program{options}.run(); }

}  // namespace printer
