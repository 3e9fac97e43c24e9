// The main loop.
#include "virtual-printer/shell/program.h"

#include <poll.h>
#include <sys/signalfd.h>

#include <algorithm>
#include <csignal>
#include <deque>
#include <exception>
#include <memory>
#include <optional>

#include "base/files/temporary_folder.h"
#include "base/terminal/language.h"
#include "virtual-printer/line/link.h"
#include "virtual-printer/line/pty.h"
#include "virtual-printer/line/tcp.h"
#include "virtual-printer/shell/clock.h"
#include "virtual-printer/shell/control_socket.h"
#include "virtual-printer/shell/log.h"
#include "virtual-printer/shell/notices.h"
#include "virtual-printer/shell/paper_watchers.h"
#include "virtual-printer/shell/standard_input.h"
#include "virtual-printer/shell/state_file.h"
#include "virtual-printer/web/browser.h"
#include "virtual-printer/web/web_page.h"

namespace printer {
namespace {

using namespace std::chrono_literals;
using zentaro::terminal::say;

constexpr auto idleCheck = 1000ms;

// The ending signals become readable. A background printer that looks at a terminal's input, or writes where
// nobody reads, gets an error instead of a signal.
Descriptor watchSignals() {
  ::signal(SIGPIPE, SIG_IGN);
  ::signal(SIGTTIN, SIG_IGN);
  sigset_t ending;
  sigemptyset(&ending);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&ending, number);
  ::sigprocmask(SIG_BLOCK, &ending, nullptr);
  return Descriptor(::signalfd(-1, &ending, SFD_CLOEXEC));
}

std::unique_ptr<HostLine> makeLine(const Options& options) {
  if (!options.tcp) return std::make_unique<Pty>();
  return std::make_unique<TcpLine>(*options.tcp, [](const std::string& client) {
    notice(
        say("rechazado: {}, otro equipo tiene la línea", "refused: {}, another host has the line", {client}));
  });
}

class Program {
 public:
  Program(const Options& options, Descriptor signals);
  int run();

 private:
  bool save(const Books& books);
  void showOnThePage(const Address& address);
  void tell(const Moment& moment, const Event& event);
  void connect();
  void carry(const Output& output);
  std::string reply(const std::string& line);
  int waitTime() const;

  const Options& options_;
  const Clock clock_;
  Descriptor signals_;
  std::optional<StateFile> state_;
  std::optional<Link> link_;
  std::unique_ptr<HostLine> line_;
  FaultSet faults_;
  Device device_;
  Engine engine_;
  RollOnScreen screen_;
  std::deque<PaperFile> papers_;
  Notices notices_;
  std::optional<LogFile> log_;
  std::vector<EventWatcher*> watchers_;  // told of every event, in this order
  StandardInput input_;
  std::optional<ControlSocket> control_;
  std::optional<WebPage> web_;
  std::vector<Served*> served_;  // by the loop, beside the line
  bool isQuitting_ = false;
};

Program::Program(const Options& options, Descriptor signals)
    : options_{options},
      clock_{options.clock},
      signals_{std::move(signals)},
      state_{options.state.empty() ? std::nullopt : std::optional<StateFile>{std::in_place, options.state}},
      line_{makeLine(options)},
      faults_{options.seed},
      device_{options.identity, state_ ? state_->load() : Books{},
              [this](const Books& books) { return save(books); }},
      engine_{device_, faults_, options.speed,
              [this](const Moment& at, const Event& event) { tell(at, event); }},
      input_{[this](const std::string& line) { return reply(line); }} {
  if (!options.log.empty()) watchers_.push_back(&log_.emplace(options.log));
  watchers_.push_back(&notices_);
  if (!options.isQuiet) device_.roll().watch(screen_);
  for (const std::string& paper : options.papers) device_.roll().watch(papers_.emplace_back(paper));
  if (!options.link.empty()) link_.emplace(options.link);
  served_.push_back(&input_);
  if (!options.control.empty())
    served_.push_back(
        &control_.emplace(options.control, [this](const std::string& line) { return reply(line); }));
  faults_.add(options.faults);
  if (options.web) showOnThePage(*options.web);
}

void Program::showOnThePage(const Address& address) {
  web_.emplace(address, options_.identity, [this](const std::string& line) { return reply(line); });
  device_.roll().watch(web_->paper());
  watchers_.push_back(&*web_);
  served_.push_back(&*web_);
}

bool Program::save(const Books& books) {
  if (!state_) return true;
  try {
    state_->save(books);
    return true;
  } catch (const std::runtime_error& error) {
    tell(clock_.now(), {EventKind::Unsaved, error.what()});
    return false;
  }
}

void Program::tell(const Moment& moment, const Event& event) {
  for (EventWatcher* watcher : watchers_) watcher->happened(moment, event);
}

void Program::connect() {
  line_->connect();
  if (link_) link_->pointTo(line_->name());
  const std::string name = link_ ? options_.link : line_->name();
  if (web_) web_->lineIs(name);
  notice("ready: " + name);  // in no language: programs wait for it
}

void Program::carry(const Output& output) {
  switch (output.kind) {
    case Output::Kind::Bytes:
      line_->write(output.bytes);
      if (web_) web_->sent(clock_.now(), output);
      break;
    case Output::Kind::HangUp:
      line_->hangUp();
      if (web_) web_->lineIs({});
      break;
    case Output::Kind::Reconnect: connect(); break;
    case Output::Kind::PowerOn: break;
  }
}

std::string Program::reply(const std::string& line) {
  const ControlReply reply = control(line, faults_, device_.works());
  isQuitting_ = isQuitting_ || reply.quit;
  return reply.text;
}

int Program::waitTime() const {
  const auto next = engine_.nextDue();
  if (!next) return static_cast<int>(idleCheck.count());
  return static_cast<int>(std::clamp(*next - clock_.steady(), 0ms, idleCheck).count());
}

int Program::run() {
  device_.start(clock_.now().local);
  if (web_) notice("page: " + web_->url());
  connect();
  if (web_ && options_.opensBrowser) openInBrowser(web_->url());
  while (!isQuitting_) {
    std::vector<pollfd> watched{{signals_.get(), POLLIN, 0}};
    line_->watch(watched);
    for (const Served* part : served_) part->watch(watched);
    const int seen = ::poll(watched.data(), watched.size(), waitTime());
    if (seen < 0) continue;
    if (watched[0].revents != 0) break;
    engine_.receive(line_->read(watched), clock_.now());
    for (Served* part : served_) part->serve(watched);
    for (const Output& output : engine_.due(clock_.now())) carry(output);
    if (web_) web_->show(clock_.now(), device_.works(), faults_);
    if (seen == 0) line_->rest();
  }
  return 0;
}

}  // namespace

// The signals wait before there is a folder that has to be removed.
int runProgram(Options options) {
  Descriptor signals = watchSignals();
  std::optional<zentaro::tools::TemporaryFolder> folder;
  if (options.isTemporary) {
    folder.emplace();
    options.link = folder->path() / "printer";
    options.papers.push_back(folder->path() / "paper.txt");
  }
  return Program{options, std::move(signals)}.run();
}

}  // namespace printer
