// The printers: what was heard of them, what they say now, and the day's figures.
#include "base/terminal/language.h"
#include "service/http/call.h"
#include "service/http/job_json.h"

namespace zentaro::service {

using terminal::say;

namespace {

constexpr std::chrono::seconds askPatience{20};

}  // namespace

Worker& Api::seen(const Call& call) const {
  Worker* worker = parts_.workers.find(call.names[0]);
  if (worker == nullptr || !call.token.sees(call.names[0]))
    throw Problem{404, "not-found", say("aquí no hay esa impresora", "there is no such printer here")};
  return *worker;
}

Json Api::printer(const std::string& name) {
  return printerJson(parts_.workers.find(name)->report(), *parts_.books.borrow());
}

void Api::getPrinters(Call& call) {
  Json list = Json::array();
  for (const std::string& name : parts_.workers.names()) {
    if (!call.token.sees(name)) continue;
    if (call.number("fresh", 0, 1, 0) == 1) parts_.workers.find(name)->ask(Question::Status, askPatience);
    list.push_back(printer(name));
  }
  Json rights = Json::array();
  for (const Right right : call.token.rights) rights.push_back(nameOf(right));
  service::answer(call.response, 200, {{"printers", list}, {"rights", rights}});
}

// Nobody asks a till's printer from here.
void Api::needHere(const Worker& worker) {
  if (worker.till().empty()) return;
  throw Problem{501, "at-the-till",
                say("eso se pregunta en la caja {}", "that is asked at the till {}", {worker.till()})};
}

void Api::getTills(Call& call) {
  const bool seesAll = call.token.only.empty() && parts_.tills;
  service::answer(call.response, 200, {{"tills", seesAll ? parts_.tills() : Json::array()}});
}

void Api::getPrinter(Call& call) {
  Worker& worker = seen(call);
  if (call.number("fresh", 0, 1, 0) == 1) needHere(worker);
  if (call.number("fresh", 0, 1, 0) == 1) worker.ask(Question::Status, askPatience);
  service::answer(call.response, 200, printer(call.names[0]));
}

void Api::getDay(Call& call) {
  needHere(seen(call));
  const std::optional<Json> figures = seen(call).ask(Question::Day, askPatience);
  if (figures) return service::answer(call.response, 200, *figures);
  call.response.set_header("Retry-After", "5");
  const std::string cause = seen(call).report().cause;
  throw Problem{503, "unreachable",
                say("la impresora no da ahora los montos del día{}; pregunte otra vez",
                    "the printer does not give the day's figures now{}; ask again",
                    {cause.empty() ? "" : " (" + cause + ")"})};
}

void Api::getHealth(Call& call) {
  int ready = 0, all = 0;
  for (const std::string& name : parts_.workers.names()) {
    const Condition condition = parts_.workers.find(name)->report().condition;
    ready += condition == Condition::Ready || condition == Condition::Busy ? 1 : 0;
    ++all;
  }
  constexpr int most = 1000;
  const auto unknown = parts_.books.borrow()->changedAfter(0, {{}, till::State::Unknown}, most).size();
  service::answer(call.response, isEnding_ ? 503 : 200,
                  {{"status", isEnding_ ? "ending" : "ok"},
                   {"printers", all},
                   {"ready", ready},
                   {"unknown", unknown},
                   {"chain", parts_.chain()}});
}

}  // namespace zentaro::service
