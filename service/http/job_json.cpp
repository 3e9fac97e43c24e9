// The members of the answers.
#include "service/http/job_json.h"

#include "base/system/uptime.h"
#include "service/jobs/job_request.h"
#include "service/workers/words.h"
#include "till/document/decimal.h"
#include "till/words/job_words.h"

namespace zentaro::service {

using till::Job;
using till::State;

namespace {

// The figures that were kept with the job when it ended.
Json kept(const Json& result, const char* name) {
  return result.is_object() && result.contains(name) ? result.at(name) : Json(nullptr);
}

}  // namespace

Json jobJson(const Job& job, bool isVirtual) {
  const Json result = Json::parse(job.result, nullptr, false);
  const bool isDocument = job.kind == till::Kind::Invoice || job.kind == till::Kind::CreditNote;
  const Json total = kept(result, "total");
  return {{"id", job.id},
          {"printer", job.printer},
          {"kind", till::nameOf(job.kind)},
          {"attempt", job.attempt},
          {"state", till::nameOf(job.state)},
          {"verdict", orNull(job.verdict)},
          {"number", orNull(job.number)},
          {"machine", orNull(job.before.machine)},
          {"total", total.is_null() && isDocument ? Json(till::centsText(job.total)) : total},
          {"igtf", kept(result, "igtf")},
          {"change", kept(result, "change")},
          {"figures", kept(result, "figures")},
          {"cause", orNull(job.cause)},
          {"next", orNull(nextOf(job))},
          {"accepted", till::momentJson(job.accepted)},
          {"begun", till::momentJson(job.begun)},
          {"ended", till::momentJson(job.ended)},
          {"revision", job.revision},
          {"virtual", isVirtual}};
}

Json printerJson(const PrinterReport& report, const till::Books& books) {
  const std::vector<Job> queued = books.queued(serviceOwner, report.name);
  const system::Uptime now = system::uptime();
  const bool isOfThisBoot = !queued.empty() && queued.front().boot == now.boot;
  Json unknown = Json::array();
  for (const Job& job : books.changedAfter(0, {report.name, State::Unknown})) unknown.push_back(job.id);
  Json running = nullptr;
  if (report.running)
    running = {{"id", report.running->id},
               {"step", report.running->step},
               {"steps", report.running->steps},
               {"label", report.running->label}};
  return {{"name", report.name},
          {"device", report.device},
          {"state", nameOf(report.condition)},
          {"cause", orNull(report.cause)},
          {"next", orNull(report.next)},
          {"machine", orNull(report.machine)},
          {"running", running},
          {"queue", queued.size()},
          {"oldest", isOfThisBoot ? now.seconds - queued.front().uptime : 0},
          {"unknown", unknown},
          {"lastInvoice", orNull(report.lastInvoice)},
          {"lastCreditNote", orNull(report.lastCreditNote)},
          {"lastZ", orNull(report.lastZ)},
          {"booksMiss", report.booksMiss},
          {"heard", till::momentJson(report.heard)},
          {"virtual", report.isVirtual}};
}

}  // namespace zentaro::service
