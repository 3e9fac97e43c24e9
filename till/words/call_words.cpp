// The records.
#include "till/words/call_words.h"

#include "base/files/json.h"
#include "till/document/decimal.h"
#include "till/words/job_words.h"

namespace zentaro::till {

Json problemsJson(const Problems& problems) {
  Json list = Json::array();
  for (const Problem& problem : problems) list.push_back({{"path", problem.path}, {"text", problem.text}});
  return list;
}

Json checkedJson(const Checked& checked) {
  const Totals& totals = checked.totals;
  const auto amount = [&](Cents cents) {
    return checked.problems.empty() ? Json(centsText(cents)) : Json(nullptr);
  };
  return {{"problems", problemsJson(checked.problems)},
          {"warnings", problemsJson(checked.warnings)},
          {"net", amount(totals.net)},
          {"tax", amount(totals.tax)},
          {"igtf", amount(totals.igtf)},
          {"total", amount(totals.due())},
          {"paid", amount(totals.paid)},
          {"change", amount(totals.change())}};
}

Json jobsJson(const std::vector<Job>& jobs) {
  Json list = Json::array();
  for (const Job& job : jobs) list.push_back(jobJson(job));
  return list;
}

Json settledJson(const Settled& settled) {
  return {{"refusal", settled.refusal ? Json(nameOf(*settled.refusal)) : Json(nullptr)},
          {"cause", orNull(settled.cause.text)},
          {"machine", orNull(settled.machine)},
          {"judged", jobsJson(settled.judged)},
          {"open", jobsJson(settled.open)}};
}

}  // namespace zentaro::till
