// The main loop.
#include "virtual-printer/shell/program.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <optional>

#include "base/files/paths.h"
#include "base/files/temporary_folder.h"
#include "base/terminal/language.h"
#include "virtual-printer/line/inbox.h"
#include "virtual-printer/line/sample_sale.h"
#include "virtual-printer/line/tcp.h"
#include "virtual-printer/line/terminal.h"
#include "virtual-printer/shell/clock.h"
#include "virtual-printer/shell/control_socket.h"
#include "virtual-printer/shell/ending.h"
#include "virtual-printer/shell/log.h"
#include "virtual-printer/shell/notices.h"
#include "virtual-printer/shell/paper_watchers.h"
#include "virtual-printer/shell/standard_input.h"
#include "virtual-printer/shell/state_file.h"
#include "virtual-printer/web/browser.h"
#include "virtual-printer/web/web_page.h"

namespace virtual_printer {
namespace {

using namespace std::chrono_literals;
using zentaro::terminal::say;

constexpr auto idleCheck = 1000ms;

std::unique_ptr<HostLine> makeLine(const Options& options) {
  if (!options.tcp) return makeTerminal(options.link);
  return std::make_unique<TcpLine>(*options.tcp, [](const std::string& client) {
    notice(
        say("rechazado: {}, otro equipo tiene la línea", "refused: {}, another host has the line", {client}));
  });
}

class Program {
 public:
  Program(const Options& options, std::shared_ptr<Inbox> inbox);
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program();
  void run();

 private:
  bool save(const Books& books);
  void showOnThePage(const Address& address);
  void tell(const Moment& moment, const Event& event);
  void connect();
  void reconnect();
  void carry(const Output& output);
  std::string beginSample();
  void endSample();
  std::string reply(const std::string& line);
  std::chrono::milliseconds waitTime() const;

  const Options& options_;
  const Clock clock_;
  const std::shared_ptr<Inbox> inbox_;  // what other threads want done
  std::optional<StateFile> state_;
  std::unique_ptr<HostLine> line_;
  FaultSet faults_;
  Device device_;
  Engine engine_;
  RollOnScreen screen_;
  std::deque<PaperFile> papers_;
  Notices notices_;
  std::optional<LogFile> log_;
  std::vector<EventWatcher*> watchers_;  // told of every event, in this order
  std::optional<ControlSocket> control_;
  std::optional<WebPage> web_;
  std::optional<SampleSale> sample_;
  // Whose answers are not the host's: the commands of the sample, by their count.
  int beforeSample_ = 0, lastOfSample_ = 0;
  int leftOpen_ = 0;            // the number of a document that a sample could not end
  bool isLineLacking_ = false;  // it was not to be had after a hang-up
  Trouble lineTrouble_;
  bool isQuitting_ = false;
};

Program::Program(const Options& options, std::shared_ptr<Inbox> inbox)
    : options_{options},
      clock_{options.clock},
      inbox_{std::move(inbox)},
      state_{options.state.empty()
                 ? std::nullopt
                 : std::optional<StateFile>{std::in_place, zentaro::files::pathOf(options.state)}},
      line_{makeLine(options)},
      faults_{options.seed},
      device_{options.identity, state_ ? state_->load() : Books{},
              [this](const Books& books) { return save(books); }},
      engine_{device_, faults_, options.speed,
              [this](const Moment& at, const Event& event) { tell(at, event); }} {
  if (!options.log.empty()) watchers_.push_back(&log_.emplace(options.log));
  watchers_.push_back(&notices_);
  if (!options.isQuiet) device_.roll().watch(screen_);
  for (const std::string& paper : options.papers) device_.roll().watch(papers_.emplace_back(paper));
  const auto answer = [this](const std::string& line) { return reply(line); };
  if (!options.control.empty()) control_.emplace(options.control, answer);
  faults_.add(options.faults);
  if (options.web) showOnThePage(*options.web);
  readStandardInput(inbox_, answer);
}

// Nobody waits for this printer any more.
Program::~Program() { inbox_->close(); }

void Program::showOnThePage(const Address& address) {
  web_.emplace(address, options_.identity, *inbox_, [this](const std::string& line) { return reply(line); });
  device_.roll().watch(web_->paper());
  watchers_.push_back(&*web_);
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
  if (web_) web_->lineIs(line_->name());
  notice("ready: " + line_->name());  // in no language: programs wait for it
}

// What is lacking now, a descriptor or the port, may be had a second later.
void Program::reconnect() {
  try {
    connect();
    isLineLacking_ = false;
    lineTrouble_.pass();
  } catch (const std::runtime_error& error) {
    isLineLacking_ = true;
    lineTrouble_.meet(error.what());
  }
}

void Program::carry(const Output& output) {
  switch (output.kind) {
    case Output::Kind::Bytes:
      if (sample_) sample_->take(output.bytes, clock_.steady());
      if (!sample_ && (output.exchange <= beforeSample_ || output.exchange > lastOfSample_))
        line_->write(output.bytes);
      if (web_) web_->sent(clock_.now(), output);
      break;
    case Output::Kind::HangUp:
      line_->hangUp();
      if (web_) web_->lineIs({});
      break;
    case Output::Kind::Reconnect: reconnect(); break;
    case Output::Kind::PowerOn: break;
  }
}

std::string Program::reply(const std::string& line) {
  const ControlReply reply = control(line, faults_, device_.works());
  isQuitting_ = isQuitting_ || reply.order == ControlReply::Order::Quit;
  return reply.order == ControlReply::Order::Sample ? beginSample() : reply.text;
}

// The line waits meanwhile: a host that has just begun to speak is answered afterwards.
std::string Program::beginSample() {
  const Machine& machine = device_.works().machine;
  const bool isOpen = machine.phase() != Phase::None;
  const bool isOwn =
      isOpen && machine.document().kind == DocumentKind::Invoice && machine.document().number == leftOpen_;
  if (sample_ || engine_.nextDue() || (isOpen && !isOwn))
    return say("error: un programa está usando la impresora", "error: a program is using the printer");
  sample_.emplace();
  if (isOwn) sample_->cancelFirst();
  beforeSample_ = engine_.exchanges();
  if (web_) web_->sampleBegins();
  return "ok";
}

void Program::endSample() {
  lastOfSample_ = engine_.exchanges();
  const Machine& machine = device_.works().machine;
  leftOpen_ = machine.phase() == Phase::None ? 0 : machine.document().number;
  if (web_) web_->sampleEnds(*sample_);
  sample_.reset();
}

std::chrono::milliseconds Program::waitTime() const {
  constexpr auto betweenLooks = 20ms;
  if (sample_) return betweenLooks;
  const auto next = engine_.nextDue();
  return next ? std::clamp(*next - clock_.steady(), 0ms, idleCheck) : idleCheck;
}

void Program::run() {
  device_.start(clock_.now().local);
  for (const std::string& paper : options_.papers) notice("paper: " + paper);
  if (web_) notice("page: " + web_->url());
  if (web_ && !isLocal(*options_.web))
    complain(say("quien alcance {} puede ver la página y pedir fallas: no tiene clave ni cifrado",
                 "whoever reaches {} can see the page and order faults: it has no password and no encryption",
                 {web_->url()}));
  connect();
  if (web_ && options_.opensBrowser) openInBrowser(web_->url());
  while (!isQuitting_ && !Ending::isRequested()) {
    WatchList watched{{inbox_->wake().handle()}};
    if (!sample_) line_->watch(watched);
    if (control_) control_->watch(watched);
    const bool isIdle = !waitFor(watched, waitTime());
    if (!sample_) engine_.receive(line_->read(watched), clock_.now());
    if (sample_) engine_.receive(sample_->next(clock_.steady()).value_or(std::string{}), clock_.now());
    if (sample_ && sample_->end()) endSample();
    inbox_->work();
    if (control_) control_->serve(watched);
    for (const Output& output : engine_.due(clock_.now())) carry(output);
    if (web_) web_->show(clock_.now(), device_.works(), faults_);
    if (isIdle && isLineLacking_) reconnect();
    if (isIdle) line_->rest();
  }
}

}  // namespace

// The ending is arranged before there is a folder that has to be removed.
void runProgram(Options options) {
  const auto inbox = std::make_shared<Inbox>();
  const Ending ending{inbox->wake()};
  std::optional<zentaro::base::TemporaryFolder> folder;
  if (options.isTemporary) {
    folder.emplace();
    if (!options.tcp && hasLinks()) options.link = zentaro::files::textOf(folder->path() / "printer");
    options.papers.push_back(zentaro::files::textOf(folder->path() / "paper.txt"));
  }
  Program{options, inbox}.run();
}

}  // namespace virtual_printer
