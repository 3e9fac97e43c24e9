// Under which names the books remember what belongs to the chain, and a person's word on older books.
#pragma once

#include <string>

#include "base/system/uptime.h"
#include "till/books/books.h"

namespace zentaro::service {

inline constexpr const char* noteLineages = "chain lineages";  // at a till: its starts
inline constexpr const char* noteTold = "chain told";          // at a till: the most that the centre has seen
inline constexpr const char* noteTills = "chain tills";        // at the centre: their names
inline constexpr const char* noteTill = "chain till ";         // at the centre: what is known of each
inline constexpr const char* noteAccepted = "chain accepted";  // that older books count, and when it was said

inline void acceptOlder(till::Books& books) {
  const system::Uptime now = system::uptime();
  books.remember(noteAccepted, now.boot + " " + std::to_string(now.seconds));
}

/// Required: said a moment ago, for what was said of earlier books is not said of these.
inline bool isOlderAccepted(const till::Books& books) {
  constexpr int moment = 60;
  const system::Uptime now = system::uptime();
  const std::string said = books.remembered(noteAccepted);
  for (std::int64_t ago = 0; ago <= moment; ++ago)
    if (said == now.boot + " " + std::to_string(now.seconds - ago)) return true;
  return false;
}

}  // namespace zentaro::service
