// The rules of a chain, without network, clock or disk: what a till does with a job that comes to it, what the centre
// does with what comes back, and when either of them has older books than the other remembers.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "service/chain/messages.h"

namespace zentaro::service {

/// The most seconds until a connection is tried again, after a try that had waited for so many (0: the first): at
/// once all over `spread` for those that were cut, slowly up to it for one that never was connected.
int spanOfReturn(int last, bool wasConnected, int spread);

// --- At the till ---

enum class Reply {
  Accept,  // into the books, to be printed
  Refuse,  // into the books as not printed: whatever comes later under this attempt finds it there
  Result,  // it is known: what came of it is told again
  Foreign  // the id is another job's here: not printed, and nothing is entered
};
/// `digest` is of the message's content by this till's reading; `isInOrder`: it could be printed here.
Reply replyTo(const JobMessage& message, const std::string& digest, bool isInOrder,
              const std::optional<till::Job>& known);

/// A start of the till, and the first revision that is its own.
struct Lineage {
  std::string name;
  std::int64_t first = 0;
};
std::string textOf(const std::vector<Lineage>& lineages);
std::vector<Lineage> lineagesFrom(std::string_view text);

/// Whether the centre has seen what these books never held: the till's disk was restored or replaced. `now` is the
/// books' revision.
bool areOlder(const std::vector<Lineage>& lineages, std::int64_t now, const Seen& seen);

// --- At the centre ---

/// Whether what the till says of a job is more than what the centre's books have.
bool isNews(const till::Job& known, const till::Job& told);

/// Whether the till's job is the one that the centre ordered under this id, and not one of the shop's own.
bool isOrdered(const std::optional<till::Job>& known, const std::string& till, const till::Job& told);

/// What the centre has seen when these results are on its disk. They are stored in any case; a gap before them leaves
/// it where it is, and the till sends again.
Seen seenAfter(const Seen& seen, const Results& results);

/// Whether the till was told of more than the centre remembers: the centre's disk was restored.
bool wasRestored(const Seen& seen, const std::optional<Seen>& told);

}  // namespace zentaro::service
