// What the books keep of one job: what was wanted, how far it got, and what came of it.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "zentaro_api.h"

namespace zentaro::till {

enum class Kind { Invoice, CreditNote, X, Z };
/// Printed and NotPrinted are final. Unknown is, unless counters or a person say more.
enum class State { Queued, Printing, Printed, NotPrinted, Unknown };
/// What is about to be sent.
enum class Turn { None, Open, Lines, Close, Finish, Cancel };

ZENTARO_API std::string_view nameOf(Kind kind);
ZENTARO_API std::string_view nameOf(State state);
ZENTARO_API std::string_view nameOf(Turn turn);

/// Whether the text may name a job: 1 to 128 of A-Z a-z 0-9 . _ ~ : -
ZENTARO_API bool isJobId(std::string_view text);

/// Seconds since 1970, for people only: nothing is decided by them.
using Moment = std::int64_t;

/// What the machine says of itself before the first command of a document or closing. Amounts are in cents.
struct Evidence {
  std::string machine;                    // its serial number; its resolved device when it has none
  std::int64_t lastNumber = 0;            // of the kind that is to be printed
  std::optional<std::int64_t> dayAmount;  // without tax, of the documents of that kind since the last Z
  std::optional<std::int64_t> lastZ;      // the number of the last Z
};

/// What is wanted.
struct Order {
  std::string id;       // empty: none
  std::string owner;    // who may begin it: "sale", "host", "till" or the service
  std::string printer;  // for people and for the queue
  Kind kind = Kind::Invoice;
  std::string digest;  // of the content, with its version
  std::string body;    // as it came
  std::int64_t net = 0, total = 0;
  std::chrono::seconds patience{0};
  std::string boot;         // of the computer, and
  std::int64_t uptime = 0;  // seconds since then: patience knows no other clock
};

struct Job : Order {
  std::int64_t key = 0;  // of the books alone; every job has one
  int attempt = 1;
  State state = State::Queued;
  std::string verdict;  // its name; empty while there is none
  Evidence before;
  Turn turn = Turn::None;
  bool reachedClose = false;           // a close may have been sent
  std::optional<std::int64_t> number;  // as soon as the printer gave it
  std::string result;                  // figures for programs, in the form of whoever ended it
  std::string cause;                   // why it waits, or was not printed
  bool isTold = false;                 // somebody has been told what came of it
  bool isBeyondCounters = false;       // unknown, and no counter will ever say more
  Moment accepted = 0, begun = 0, ended = 0;
  std::int64_t revision = 0;  // of the books when its state changed last
};

/// What came of a job.
struct Outcome {
  State state = State::Unknown;
  std::string verdict;
  std::optional<std::int64_t> number = {};
  std::string result = {}, cause = {};
  bool isBeyondCounters = false;
  bool isTold = false;  // nobody has to be told any more
};

}  // namespace zentaro::till
