// The table of the repeated PUT.
#include "service/jobs/put.h"

namespace zentaro::service {

Ruling rule(const std::optional<till::Job>& known, const Wish& wish) {
  if (!known) return wish.attempt == 1 ? Ruling::Accept : Ruling::AttemptAhead;
  if (wish.attempt < known->attempt) return Ruling::Known;
  const bool isNext = wish.attempt > known->attempt;
  if (isNext && known->state == till::State::NotPrinted)
    return wish.attempt == known->attempt + 1 ? Ruling::Accept : Ruling::AttemptAhead;
  if (wish.digest != known->digest) return Ruling::OtherContent;
  // A new attempt may ask for another printer, so only the same one is bound to its own.
  if (!isNext) return wish.printer == known->printer ? Ruling::Known : Ruling::OtherContent;
  return known->state == till::State::Printed ? Ruling::Known : Ruling::NotFinal;
}

std::string_view nameOf(Ruling ruling) {
  switch (ruling) {
    case Ruling::AttemptAhead: return "attempt-ahead";
    case Ruling::NotFinal: return "not-final";
    case Ruling::OtherContent: return "other-content";
    case Ruling::Accept:
    case Ruling::Known: break;
  }
  return {};
}

}  // namespace zentaro::service
