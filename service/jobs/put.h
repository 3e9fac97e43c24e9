// What a PUT of a job means, by what the books know under its id: the rule that lets a client send it again and
// again without a second paper.
#pragma once

#include <optional>
#include <string>

#include "till/books/job.h"

namespace zentaro::service {

/// What is compared: "12.5" and 12.50 have one digest, and so have Spanish and English names.
struct Wish {
  int attempt = 1;
  std::string digest, printer;
};

enum class Ruling {
  Accept,  // a new job, or the next attempt of one that was not printed
  Known,   // answered with the job as it is; nothing is sent
  AttemptAhead,
  NotFinal,
  OtherContent
};

Ruling rule(const std::optional<till::Job>& known, const Wish& wish);

/// Of a problem; nothing for Accept and Known.
std::string_view nameOf(Ruling ruling);

inline bool isFinal(till::State state) {
  return state == till::State::Printed || state == till::State::NotPrinted;
}

/// 200 for a final job, 202 for one that goes on.
inline int codeOf(till::State state) { return isFinal(state) ? 200 : 202; }

}  // namespace zentaro::service
