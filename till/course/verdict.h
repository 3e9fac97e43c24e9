// How a sale, or the closing of a day, ended: data that each program puts into its own words.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "till/books/job.h"
#include "till/document/totals.h"
#include "zentaro_api.h"

namespace zentaro::till {

enum class Ending {
  Printed,
  PrintedInPart,  // closed and counted, but extra lines may be missing
  NotPrinted,
  Unknown,
  StillOpen,        // not counted; the printer refuses to cancel it
  StillToBeClosed,  // partially closed; the printer refuses the definitive close
  OpenBefore,       // a document was open before; nothing was sent
  Unreachable,      // the printer did not give its counters at the start; nothing was sent
  // What the books say; nothing was sent.
  AlreadyPrinted,  // under this id
  PrintedBefore,   // the same content, by a sale that was cut short, and nobody was told
  UnknownBefore,   // nobody knows what became of it at an earlier try
  OtherContent,    // the id belongs to another sale
  Busy             // the id, the machine or its port is in use elsewhere
};

/// Whether the job is the reading or the closing of a day, and no document.
inline bool isDayReport(Kind kind) { return kind == Kind::X || kind == Kind::Z; }

/// For programs, in no language: "printed", "still-open".
ZENTARO_API std::string_view nameOf(Ending ending);
/// Whether the document was printed by this call.
ZENTARO_API bool isPrinted(Ending ending);
/// What the end of a document is in the books. One that is still open is an open question.
ZENTARO_API State stateOf(Ending ending);

/// Why a document did not go straight to its end.
struct Cause {
  enum class Kind {
    None,     // it did
    Refused,  // by the printer, by the library, or because the printer's total differs
    Lost,     // an answer
    Silent,   // the printer gives no counters
    Stopped,  // by whoever asked for it
    Books     // they cannot be written
  };
  Kind kind = Kind::None;
  std::string text = {};     // for people: what was being done, and what came of it
  std::string printer = {};  // the printer's own words, where it refused
};

/// What the printer said when it closed a document.
struct Receipt {
  std::int64_t number = 0;
  Cents total = 0;  // with the IGTF
  Cents change = 0;
};

struct Verdict {
  Ending ending = Ending::Unknown;
  Cause cause = {};
  bool wasOpened = false;                   // something of the document may be on the paper
  std::optional<std::int64_t> number = {};  // of the document, when the printer says it
  std::optional<Receipt> receipt = {};
  Totals totals = {};           // as they were computed
  std::optional<Job> job = {};  // of the books: this one, or the one that is in its way

  Cents total() const { return receipt ? receipt->total : totals.due(); }
  Cents igtf() const { return receipt ? receipt->total - totals.total() : totals.igtf; }
  Cents change() const { return receipt ? receipt->change : totals.change(); }
};

}  // namespace zentaro::till
