// The turns of the thread.
#include "service/workers/worker_loop.h"

#include <algorithm>

#include "automation/automation_error.h"
#include "base/files/json.h"
#include "base/terminal/language.h"
#include "service/jobs/queue.h"
#include "service/workers/aftermath.h"
#include "service/workers/words.h"
#include "till/course/closing.h"
#include "till/course/figures.h"
#include "till/course/sale_course.h"
#include "till/course/station.h"
#include "till/line/line_words.h"
#include "till/words/closing_words.h"

namespace zentaro::service {

using namespace std::chrono_literals;
using terminal::say;
using till::Job;
using till::Kind;
using till::State;

namespace {

constexpr auto retry = 5s, idleVisit = 10s;
// How long a printer that says nothing is waited for before anything is sent to it.
constexpr auto contactPatience = 15s;

bool isClosing(const Job& job) { return job.kind == Kind::X || job.kind == Kind::Z; }

std::string documentOpenText() { return say("hay un documento abierto", "a document is open"); }

}  // namespace

void PrinterWorker::Loop::run() {
  while (!worker_.isEnding_) {
    Clock::time_point due = Clock::now() + retry;
    try {
      if (!books_) books_ = std::make_unique<till::Books>(worker_.settings_.books);
      due = turn();
    } catch (const std::exception& error) {  // the books, or a fault of ours: nothing is begun meanwhile
      setCondition(Condition::Blocked, error.what());
    }
    worker_.waitUntil(due);
  }
}

PrinterWorker::Loop::Clock::time_point PrinterWorker::Loop::turn() {
  expire();
  answerAsked();
  if (Clock::now() >= visitDue_) visit();
  if (!port_ || !port_->printer().PortOpen()) return visitDue_;
  if (const std::optional<Job> job = next()) {
    carry(*job);
    return Clock::now();
  }
  Clock::time_point due = visitDue_;
  for (const auto& [key, at] : refused_) due = std::min(due, at);
  // Patience ends by itself, to the second.
  if (!books_->queued(serviceOwner, worker_.name()).empty())
    due = std::min<Clock::time_point>(due, Clock::now() + 1s);
  return due;
}

void PrinterWorker::Loop::expire() {
  const system::Uptime now = system::uptime();
  const std::vector<Job> queued = books_->queued(serviceOwner, worker_.name());
  // What was withdrawn meanwhile is not tried again, and keeps nobody waiting.
  std::erase_if(refused_, [&](const auto& refused) {
    return std::ranges::find(queued, refused.first, &Job::key) == queued.end();
  });
  bool isNews = false;
  for (const Job& job : queued) {
    if (!isExpired(job, now)) continue;
    const std::string why = job.cause.empty() ? "" : " (" + job.cause + ")";
    isNews = books_->withdraw(job.id, "expired", expiredText() + why) || isNews;
    refused_.erase(job.key);
  }
  if (isNews) worker_.settings_.changed();
}

void PrinterWorker::Loop::answerAsked() {
  std::optional<bool> isReached;  // by one visit for all: a printer that is silent is waited for once
  for (PrinterWorker::Asked& asked : worker_.takeAsked()) {
    std::optional<Json> answer;
    try {
      if (!isReached) {
        isReached = false;
        visit();
        isReached = worker_.report().condition != Condition::Unreachable;
      }
      if (*isReached) answer = asked.question == Question::Day ? day() : Json(true);
    } catch (const std::exception&) {  // told by the condition
    }
    asked.answer.set_value(std::move(answer));
  }
}

bool PrinterWorker::Loop::reach() {
  try {
    if (!port_) port_ = std::make_unique<PrinterPort>(worker_.settings_.device);
    port_->open();
    return true;
  } catch (const AutomationError& error) {
    setCondition(Condition::Unreachable, error.what(),
                 say("Revise corriente, cable y puerto; \"zentaro doctor\" dice qué le falta.",
                     "Look at power, cable and port; \"zentaro doctor\" says what is missing."));
    return false;
  }
}

till::PrinterLine PrinterWorker::Loop::line() {
  stopWaiting_ = Clock::now() + contactPatience;
  return {port_->printer(), till::patienceOf({}), this,
          [this] { return worker_.isEnding_ || Clock::now() > stopWaiting_; }};
}

void PrinterWorker::Loop::fill(till::Options& options) {
  options.observer = this;
  options.books = books_.get();
  options.stop.cause = till::trouble(till::Heard::Nothing);  // else the service ends, and the job waits on
  options.owner = serviceOwner;
  options.printerName = worker_.name();
}

void PrinterWorker::Loop::setCondition(Condition condition, const std::string& cause,
                                       const std::string& next) {
  isBlocked_ = condition == Condition::Blocked;
  worker_.change([&](PrinterReport& report) {
    report.condition = condition;
    report.cause = cause;
    report.next = next;
    report.running.reset();
  });
}

// Gets in step, judges what is open on this machine, and looks at what the printer says of itself.
void PrinterWorker::Loop::visit() {
  visitDue_ = Clock::now() + retry;
  if (!reach()) {
    worker_.settings_.holderOf({});
    return;
  }
  till::Options options;
  fill(options);
  till::PrinterLine asked = line();
  till::Station station(options, till::BooksNeed::Required);
  till::Cause cause;
  if (station.arrive(port_->printer(), asked, cause)) {
    worker_.settings_.holderOf({});
    return setCondition(
        Condition::Unreachable,
        cause.text.empty() ? say("otro programa la usa", "another program uses it") : cause.text,
        say("Revise corriente, cable, papel y puerto.", "Look at power, cable, paper and port."));
  }
  if (const std::string holder = worker_.settings_.holderOf(station.machine()); holder != worker_.name()) {
    port_.reset();
    return setCondition(Condition::Unreachable,
                        say("es la misma máquina que {} ({})", "it is the same machine as {} ({})",
                            {holder, station.machine()}),
                        say("Deje una de las dos líneas.", "Keep one of the two lines."));
  }
  look(station.machine(), asked);
  nameLeftOvers(station.machine());
  if (books_->judgeable(station.machine()).empty() && !isBlocked_) visitDue_ = Clock::now() + idleVisit;
}

void PrinterWorker::Loop::look(const std::string& machine, till::PrinterLine& asked) {
  CZentaro& printer = port_->printer();
  std::optional<std::int64_t> lastZ;
  if (asked.getInStep() == till::Heard::InStep) lastZ = till::lastZOf(printer);
  const auto status = printer.GetStatusHASAR();
  const bool isAnswered =
      status && till::heardOfStatus(printer.nEnvironmentError, printer.getResponse(0)) == till::Heard::InStep;
  const int document = isAnswered ? status->statusDocumento : 0;
  worker_.change([&](PrinterReport& report) {
    report.machine = machine;
    report.heard = std::time(nullptr);
    if (lastZ) report.lastZ = lastZ;
    report.document = document;
    if (!isAnswered) return;
    report.lastInvoice = status->numeroUltimaFactura;
    report.lastCreditNote = status->numeroUltimaNC;
    report.booksMiss = missing(machine, Kind::Invoice, *report.lastInvoice) +
                       missing(machine, Kind::CreditNote, *report.lastCreditNote);
  });
  if (document != 0)
    setCondition(
        Condition::Blocked, documentOpenText(),
        say("Si es de otro programa, termínelo allí; si es de un trabajo de aquí, ponga papel y cierre la "
            "tapa: se termina solo. Si sigue abierto, mire el papel, detenga el servicio y dé: "
            "zentaro call --device {} {}",
            "If it is another program's, end it there; if it is a job's from here, put in paper and close "
            "the cover: it is ended by itself. If it stays open, look at the paper, stop the service and "
            "give: zentaro call --device {} {}",
            {worker_.settings_.device, till::endingCommand(document)}));
  else if (refused_.empty())
    setCondition(Condition::Ready, "");
}

// What a killed service was printing and the counters cannot answer yet, or never will because another machine is in
// front: nobody prints it now.
void PrinterWorker::Loop::nameLeftOvers(const std::string& machine) {
  std::vector<Job> left = books_->changedAfter(0, {worker_.name(), State::Printing});
  for (const Job& job : books_->unsettled(machine))
    if (job.printer != worker_.name()) left.push_back(job);
  for (const Job& job : left) {
    if (job.state != State::Printing || job.owner != serviceOwner) continue;
    books_->finish(job, {State::Unknown, "unknown", {}, {}, worker_.report().cause});
    worker_.settings_.changed();
  }
}

// Documents that the printer counted and the books do not know: a disk that was restored, or another program.
std::int64_t PrinterWorker::Loop::missing(const std::string& machine, Kind kind, std::int64_t last) const {
  const std::optional<std::int64_t> known = books_->highestNumber(machine, kind);
  return known ? std::max<std::int64_t>(0, last - *known) : 0;
}

std::optional<Json> PrinterWorker::Loop::day() {
  CZentaro& printer = port_->printer();
  if (printer.RealizarCierre(CIERRE_X, false) != ENVERR_OK || !till::answersLastCommand(printer))
    return std::nullopt;
  const auto figures = printer.GetResultadoCierre();
  if (!figures) return std::nullopt;
  Json json = till::figuresJson(*figures);
  json["machine"] = worker_.report().machine;
  return json;
}

// The id of a document that is unknown on this machine, whose evidence a Z would take away; empty for none.
std::string PrinterWorker::Loop::unknownOf(const Job& job) const {
  if (job.kind != Kind::Z || readJobRequest(job.body).request.isForced) return {};
  const PrinterReport report = worker_.report();
  for (const Job& unsettled : books_->unsettled(report.machine))
    if (!isClosing(unsettled) && till::isEvidenceOfToday(unsettled, report.lastZ))
      return unsettled.id.empty() ? unsettled.printer : unsettled.id;
  return {};
}

std::optional<Job> PrinterWorker::Loop::next() {
  const std::vector<Job> queued = books_->queued(serviceOwner, worker_.name());
  std::vector<Waiting> waiting;
  for (const Job& job : queued) {
    const std::string unknown = unknownOf(job);
    if (!unknown.empty()) books_->waits(job, heldText(unknown));
    const auto refused = refused_.find(job.key);
    const bool wasRefused = refused != refused_.end();
    waiting.push_back(
        {isClosing(job), !unknown.empty(), wasRefused, !wasRefused || refused->second <= Clock::now()});
  }
  const std::optional<std::size_t> index = pick(waiting);
  return index ? std::optional(queued[*index]) : std::nullopt;
}

bool PrinterWorker::Loop::isForThisMachine(const Job& job, const JobRequest& request) {
  if (request.machine.empty()) return true;
  visit();
  const PrinterReport report = worker_.report();
  if (report.condition == Condition::Unreachable) {
    refused_[job.key] = Clock::now() + retry;
    books_->waits(job, report.cause);
    return false;
  }
  if (report.machine == request.machine) return true;
  books_->withdraw(job.id, "other-machine", otherMachineText(request.machine, report.machine));
  return false;
}

void PrinterWorker::Loop::carry(const Job& job) {
  const RequestReading reading = readJobRequest(job.body);
  if (!reading.noJson.empty() || !reading.problems.empty()) {
    books_->withdraw(job.id, "not-in-order",
                     reading.noJson.empty() ? reading.problems[0].text : reading.noJson);
  } else if (isForThisMachine(job, reading.request)) {
    running_ = job.id;
    worker_.change([&](PrinterReport& report) {
      report.condition = Condition::Busy;
      report.cause.clear();
      report.next.clear();
      report.running = Running{job.id, "", 0, 0};
    });
    if (isClosing(job))
      printClosing(job, reading.request);
    else
      printDocument(job, reading.request);
    running_.clear();
  }
  worker_.settings_.changed();
}

void PrinterWorker::Loop::printDocument(const Job& job, const JobRequest& request) {
  till::SellOptions options;
  fill(options);
  options.queued = job;
  options.id = job.id;
  till::PrinterLine asked = line();
  till::SaleCourse course(request.sale, request.totals, options);
  const till::Verdict verdict = course.print(port_->printer(), asked);
  settle(job, verdict, verdict.wasOpened);
}

void PrinterWorker::Loop::printClosing(const Job& job, const JobRequest& request) {
  till::CloseOptions options;
  fill(options);
  options.queued = job;
  options.id = job.id;
  options.evenIfUnknown = request.isForced;
  till::PrinterLine asked = line();
  till::ClosingCourse course(job.kind, options);
  const till::ClosingVerdict verdict = course.print(port_->printer(), asked);
  settle(job, verdict, false);
}

template <class Verdict>
void PrinterWorker::Loop::settle(const Job& job, const Verdict& verdict, bool wasOpened) {
  std::string cause = verdict.cause.printer.empty() ? verdict.cause.text : verdict.cause.printer;
  if (verdict.ending == till::Ending::OpenBefore) cause = documentOpenText();
  const bool isBegun = verdict.job.has_value() && verdict.job->state == State::Printing;
  const Aftermath aftermath = aftermathOf(verdict.ending, verdict.cause.kind, wasOpened, isBegun);
  refused_.erase(job.key);
  visitDue_ = Clock::now();
  if (aftermath == Aftermath::NotPrinted)
    books_->finish(job, {State::NotPrinted, "not-printed", {}, {}, verdict.cause.text});
  else if (aftermath == Aftermath::Ended && isBegun)  // an X whose answer was lost
    books_->finish(job, {till::stateOf(verdict.ending),
                         std::string(till::nameOf(verdict.ending)),
                         {},
                         {},
                         verdict.cause.text});
  if (aftermath != Aftermath::Waits) return setCondition(Condition::Ready, "");
  refused_[job.key] = Clock::now() + retry;
  visitDue_ = Clock::now() + retry;
  if (isBegun)
    books_->requeue(job, cause);
  else
    books_->waits(job, cause);
  const bool isSilent = verdict.ending == till::Ending::Unreachable;
  setCondition(isSilent ? Condition::Unreachable : Condition::Blocked, cause,
               isSilent
                   ? say("Revise corriente, cable y puerto.", "Look at power, cable and port.")
                   : say("Ponga la impresora en orden; el trabajo sigue solo mientras dure su paciencia.",
                         "Put the printer in order; the job goes on by itself while its patience lasts."));
}

void PrinterWorker::Loop::begins(const till::StepPlace& step) {
  if (running_.empty()) return;
  worker_.change([&](PrinterReport& report) {
    report.running = Running{running_, step.label, step.number, step.count};
  });
}

}  // namespace zentaro::service
