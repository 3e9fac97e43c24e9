// The jobs: asked for, looked at, withdrawn, and told about by a person who saw the paper.
#include <algorithm>

#include "base/terminal/language.h"
#include "service/http/call.h"
#include "service/http/job_json.h"
#include "service/jobs/put.h"
#include "service/jobs/queue.h"
#include "service/workers/words.h"
#include "till/words/call_words.h"

namespace zentaro::service {

using terminal::say;
using till::Job;
using till::State;

namespace {

Problem notFound() { return {404, "not-found", say("no hay ese trabajo", "there is no such job")}; }

std::string conflictText(Ruling ruling) {
  switch (ruling) {
    case Ruling::AttemptAhead:
      return say("ese intento se adelanta: el siguiente es uno más que el último conocido",
                 "that attempt is ahead: the next one is one more than the last one known");
    case Ruling::NotFinal:
      return say("el intento anterior no ha terminado: espere a saber qué fue de él",
                 "the earlier attempt has not ended: wait until it is known what came of it");
    default: break;
  }
  return say("este id es de otro trabajo; no se imprimió nada nuevo; dé a cada venta su propio id",
             "this id belongs to another job; nothing new was printed; give each sale an id of its own");
}

bool saysJson(const http::Request& request) {
  if (!request.has_header("Content-Type")) return true;
  const std::string type = request.get_header_value("Content-Type");
  return type.substr(0, type.find(';')) == "application/json";
}

Problem notInOrder(const till::Problems& problems) {
  const till::Problem& first = problems.front();
  return {422,
          "not-in-order",
          say("no está en orden: {} {}; corríjalo y pídalo otra vez",
              "it is not in order: {} {}; mend it and ask again", {first.path, first.text}),
          {{"problems", till::problemsJson(problems)}}};
}

void needJson(const RequestReading& reading) {
  if (reading.noJson.empty()) return;
  throw Problem{400, "no-json", say("el cuerpo no es JSON: {}", "the body is no JSON: {}", {reading.noJson})};
}

}  // namespace

bool Api::isVirtual(const std::string& printer) const {
  const Worker* worker = parts_.workers.find(printer);
  return worker != nullptr && worker->report().isVirtual;
}

Job Api::waitFor(const Call& call, Job job) {
  const int seconds = call.number("wait", 0, 60, 0);
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds{seconds};
  if (seconds == 0 || isFinal(job.state)) return job;
  const Waiter waiter{waiters_};
  for (bool goesOn = waiter.isFree(); goesOn && !isFinal(job.state);) {
    const std::uint64_t seen = parts_.bell.rung();
    // Another attempt has begun meanwhile: whoever waited for this one is told of that.
    if (const std::optional<Job> now = parts_.books.borrow()->find(job.id)) job = *now;
    goesOn = isFinal(job.state) || parts_.bell.wait(seen, until);
  }
  return job;
}

void Api::tell(Call& call, const Job& job) {
  const int code = codeOf(job.state);
  if (code == 202) {
    call.response.set_header("Location", "/v1/jobs/" + job.id);
    call.response.set_header("Retry-After", "1");
  }
  service::answer(call.response, code, jobJson(job, isVirtual(job.printer)));
}

Problem Api::conflict(const Call& call, std::string_view type, std::string text, const Job& job) const {
  Problem problem{409, type, std::move(text)};
  if (call.token.sees(job.printer)) problem.more["job"] = jobJson(job, isVirtual(job.printer));
  return problem;
}

void Api::needRightsFor(const Call& call, const JobRequest& request) {
  call.need(request.isClosing() ? Right::Close : Right::Sell);
  if (request.isForced) call.need(Right::Resolve);
  if (call.token.sees(request.printer) || request.printer.empty()) return;
  throw Problem{403, "forbidden",
                say("el token \"{}\" es solo para la impresora {}",
                    "the token \"{}\" is for the printer {} only", {call.token.name, call.token.only})};
}

// What keeps a new job from being accepted; what is known is answered whatever stands here.
void Api::needAcceptable(const Call& call, const RequestReading& reading) {
  if (!saysJson(call.request))
    throw Problem{415, "media-type",
                  say("envíe el cuerpo con Content-Type: application/json",
                      "send the body with Content-Type: "
                      "application/json",
                      {})};
  if (!reading.problems.empty()) throw notInOrder(reading.problems);
  if (parts_.workers.find(reading.request.printer) == nullptr)
    throw notInOrder(
        {{"printer", say("es \"{}\", y aquí no hay esa impresora",
                         "is \"{}\", and there is no such printer here", {reading.request.printer})}});
  if (!isEnding_) return;
  call.response.set_header("Retry-After", "5");
  throw Problem{503, "ending",
                say("el servicio está terminando; pídalo otra vez", "the service is ending; ask again")};
}

// One transaction: what was ruled is what is entered.
Job Api::enter(const Call& call, const std::string& id, const RequestReading& reading) {
  const JobRequest& request = reading.request;
  const Wish wish{request.attempt, request.digest, request.printer};
  const BooksPool::Loan books = parts_.books.borrow();
  std::optional<Job> job = books->find(id);
  const auto answerKnown = [&](Ruling ruling) {
    if (ruling == Ruling::Known && !call.token.sees(job->printer))
      throw conflict(call, "other-content", conflictText(ruling), *job);
    if (ruling == Ruling::Known) return true;
    if (ruling == Ruling::Accept) return false;
    throw job ? conflict(call, nameOf(ruling), conflictText(ruling), *job)
              : Problem{409, nameOf(ruling), conflictText(ruling)};
  };
  if (answerKnown(rule(job, wish))) return *job;
  needAcceptable(call, reading);
  bool isNew = false;
  books->together([&] {
    job = books->find(id);
    if (answerKnown(rule(job, wish))) return;
    if (books->queued(serviceOwner, request.printer).size() >= longestQueue) {
      call.response.set_header("Retry-After", "5");
      throw Problem{429, "queue-full",
                    say("la cola de {} está llena; pídalo otra vez en un momento",
                        "the queue of {} is full; ask again in a moment", {request.printer})};
    }
    job = books->put(orderOf(id, call.request.body, request));
    isNew = true;
  });
  if (isNew) {
    parts_.bell.ring();
    parts_.workers.find(request.printer)->wake();
  }
  return job.value();
}

void Api::putJob(Call& call) {
  const std::string& id = call.names[0];
  if (!till::isJobId(id))
    throw Problem{400, "bad-id",
                  say("un id tiene de 1 a 128 de A-Z a-z 0-9 . _ ~ : -",
                      "an id has 1 to 128 of A-Z a-z 0-9 . _ ~ : -")};
  call.number("wait", 0, 60, 0);
  const RequestReading reading = readJobRequest(call.request.body);
  needJson(reading);
  needRightsFor(call, reading.request);
  tell(call, waitFor(call, enter(call, id, reading)));
}

Job Api::visible(const Call& call) {
  const std::optional<Job> job = parts_.books.borrow()->find(call.names[0]);
  if (!job || !call.token.sees(job->printer)) throw notFound();
  return *job;
}

void Api::getJob(Call& call) { tell(call, waitFor(call, visible(call))); }

void Api::deleteJob(Call& call) {
  Job job = visible(call);
  const bool isClosing = job.kind == till::Kind::X || job.kind == till::Kind::Z;
  call.need(isClosing ? Right::Close : Right::Sell);
  const BooksPool::Loan books = parts_.books.borrow();
  const bool isWithdrawn = job.owner == serviceOwner && books->withdraw(job.id, "withdrawn", withdrawnText());
  if (isWithdrawn) parts_.bell.ring();
  job = books->find(job.id).value();
  if (job.verdict != "withdrawn")
    throw conflict(call, "begun",
                   isFinal(job.state)
                       ? say("ya terminó: no se puede retirar", "it has ended: it cannot be withdrawn")
                       : say("ya empezó: no se puede retirar", "it has begun: it cannot be withdrawn"),
                   job);
  tell(call, job);
}

// Of a till's job the paper is at the till: only of one that is lost for good is it said here, by its name.
void Api::needLost(const Call& call, const Json& body, const Worker& worker, const Job& job) const {
  if (body.value("force", Json()) == true && body.value("till", Json()) == worker.till()) return;
  throw conflict(
      call, "at-the-till",
      say(R"(se dice en la caja {}; si se perdió para siempre, con "force":true y "till":"{}")",
          R"(it is said at the till {}; if that is lost for good, with "force":true and "till":"{}")",
          {worker.till(), worker.till()}),
      job);
}

void Api::putFinding(Call& call) {
  Job job = visible(call);
  const Json body = Json::parse(call.request.body, nullptr, false);
  if (!body.is_object() || !body.contains("printed") || !body["printed"].is_boolean())
    throw Problem{400, "no-json",
                  say(R"(el cuerpo dice qué muestra el papel: {"printed":true} o {"printed":false})",
                      R"(the body says what the paper shows: {"printed":true} or {"printed":false})", {})};
  const bool isPrinted = body["printed"];
  if (job.state == State::Unknown) {
    Worker* worker = parts_.workers.find(job.printer);
    if (worker != nullptr && !worker->till().empty()) needLost(call, body, *worker, job);
    if (worker != nullptr && worker->hasOpenDocument())
      throw conflict(
          call, "document-open",
          say("la impresora dice que hay un documento abierto: póngala en orden (papel, tapa), y se sabrá solo",
              "the printer says that a document is open: put it in order (paper, cover), and it will be known by "
              "itself",
              {}),
          job);
    const BooksPool::Loan books = parts_.books.borrow();
    if (books->finding(job, isPrinted)) parts_.bell.ring();
    job = books->find(job.id).value();
  }
  if (job.state != (isPrinted ? State::Printed : State::NotPrinted))
    throw conflict(call, "not-unknown",
                   say("no es un trabajo del que no se sepa: lo que fue de él ya consta",
                       "it is no job that nobody knows about: what came of it stands already"),
                   job);
  tell(call, job);
}

void Api::check(Call& call) {
  if (!call.token.may(Right::Sell)) call.need(Right::Read);
  const RequestReading reading = readCheckRequest(call.request.body);
  needJson(reading);
  if (!saysJson(call.request) || !reading.problems.empty()) {
    if (!reading.problems.empty()) throw notInOrder(reading.problems);
    needAcceptable(call, reading);
  }
  const till::Problems warnings = till::check(jsonLine(Json::parse(call.request.body)["sale"])).warnings;
  const till::Totals& totals = reading.request.totals;
  service::answer(call.response, 200,
                  {{"kind", till::nameOf(reading.request.kind)},
                   {"net", till::centsText(totals.net)},
                   {"tax", till::centsText(totals.tax)},
                   {"igtf", till::centsText(totals.igtf)},
                   {"total", till::centsText(totals.due())},
                   {"change", till::centsText(totals.change())},
                   {"warnings", problemsJson(warnings)}});
}

}  // namespace zentaro::service
