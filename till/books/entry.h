// What the journal keeps of one sale, so that a sale which was cut short can be judged later.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "base/files/json_fwd.h"
#include "till/course/sale_machine.h"

namespace zentaro::tools {

enum class Fact { Printed, NotPrinted, Unknown };

struct Entry {
  std::string name;         // of this entry alone
  std::int64_t at = 0;      // when it began, seconds since 1970
  std::string process;      // that prints it
  bool isUnderWay = false;  // its process is alive, and not this one; not kept
  std::string key;          // what --id said; empty for none
  std::string digest;       // of the content
  std::string device;       // for people
  std::string machine;      // the serial number; the device when the printer does not give it
  bool isCreditNote = false;
  Cents net = 0, total = 0;
  Counters before;            // what the printer said before the document was opened
  std::optional<int> lastZ;   // the number of the last Z then
  std::string turn;           // how far it is, for people
  std::optional<int> number;  // of the document, as soon as the printer gave it
  std::optional<Fact> fact;   // what came of it; nothing while it is under way or was cut short
  bool isTold = false;        // somebody has been told what came of it
};

/// Whether it still has to be judged by the counters of its machine.
inline bool isOpenQuestion(const Entry& entry) {
  return !entry.isUnderWay && (!entry.fact || entry.fact == Fact::Unknown);
}

Json toJson(const Entry& entry);
/// Nothing for a line that is no entry, such as one that was cut short by a crash.
std::optional<Entry> entryFrom(const std::string& line);

}  // namespace zentaro::tools
