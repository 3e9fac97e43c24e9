// The table, and the record.
#include "till/words/job_words.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

#include "base/files/json.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "till/document/decimal.h"
#include "till/words/moments.h"
#include "till/words/verdict_words.h"

namespace zentaro::till {

using terminal::harmless;
using terminal::say;

namespace {

std::string stateWords(State state) {
  switch (state) {
    case State::Queued: return say("en espera", "waiting");
    case State::Printing: return say("inconclusa", "cut short");
    case State::Printed: return say("impresa", "printed");
    case State::NotPrinted: return say("no impresa", "not printed");
    case State::Unknown: break;
  }
  return say("no se sabe", "unknown");
}

std::string idWords(const Job& job) {
  if (!job.id.empty()) return harmless(job.id);
  return job.kind == Kind::X || job.kind == Kind::Z ? std::string(nameOf(job.kind)) : "-";
}

}  // namespace

std::string jobsText(const std::vector<Job>& jobs) {
  if (jobs.empty()) return say("Los libros están vacíos.\n", "The books are empty.\n");
  std::size_t width = 0;
  for (const Job& job : jobs) width = std::max(width, terminal::columnsOf(idWords(job)));
  std::ostringstream text;
  for (const Job& job : jobs) {
    text << dayAndTime(job.begun != 0 ? job.begun : job.accepted) << "  "
         << terminal::padded(stateWords(job.state), 12) << std::left << std::setw(9)
         << (job.number ? numberText(job.number) : "-") << std::right << std::setw(14) << centsText(job.total)
         << "  " << terminal::padded(idWords(job), width) << "  " << harmless(job.printer) << '\n';
  }
  return text.str();
}

Json momentJson(Moment at) { return at == 0 ? Json(nullptr) : Json(isoMoment(at)); }

Json jobJson(const Job& job) {
  Json json{{"id", orNull(job.id)},   {"printer", job.printer},     {"kind", nameOf(job.kind)},
            {"attempt", job.attempt}, {"state", nameOf(job.state)}, {"verdict", orNull(job.verdict)}};
  json["number"] = orNull(job.number);
  json["machine"] = orNull(job.before.machine);
  json["total"] = centsText(job.total);
  json["cause"] = orNull(job.cause);
  json["accepted"] = momentJson(job.accepted);
  json["begun"] = momentJson(job.begun);
  json["ended"] = momentJson(job.ended);
  json["revision"] = job.revision;
  return json;
}

}  // namespace zentaro::till
