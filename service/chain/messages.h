// What the centre of a chain and its tills tell each other, as texts: one topic for each till and kind.
//
//     zentaro/1/{till}/jobs      to the till     JobMessage
//     zentaro/1/{till}/results   from it         Results: what changed in its books behind what the centre has seen
//     zentaro/1/{till}/seen      to it, kept     Seen: the centre's disk has everything up to there
//     zentaro/1/{till}/status    from it, kept   Status; the broker itself says that it is offline
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/files/json.h"
#include "till/books/job.h"

namespace zentaro::service {

/// The till that a topic names and its last word; nothing for another topic.
struct Topic {
  std::string till, kind;
};
std::optional<Topic> parseTopic(std::string_view topic);
std::string topicOf(const std::string& till, std::string_view kind);

/// Letters without accents, digits, _ - and .; 40 at most: a part of a topic, of a printer's name and of ids.
bool isTillName(std::string_view text);

/// A printer of a till, as the centre calls it: "TILL:PRINTER".
std::string printerOf(const std::string& till, const std::string& printer);

struct JobMessage {
  std::string id, printer;  // the till's own name of it
  int attempt = 1;
  std::int64_t patience = 0;  // seconds that remain; 0: what is not known is not printed any more
  std::string body;           // of the PUT, as it came: no number in it is written anew
};
std::string textOf(const JobMessage& message);
std::optional<JobMessage> parseJobMessage(std::string_view text);

/// How far one has read in a till's books. A number alone says nothing when its disk was replaced: each start of the
/// till gives its revisions a name of their own.
struct Seen {
  std::string lineage;
  std::int64_t revision = 0;
  bool operator==(const Seen&) const = default;
};
std::string textOf(const Seen& seen);
std::optional<Seen> parseSeen(std::string_view text);

struct Results {
  std::int64_t after = 0;    // what the till took for seen
  Seen upTo;                 // without a lineage: an answer out of turn
  bool isFromStart = false;  // a person has said that these older books count
  std::vector<till::Job> jobs;
};
std::string textOf(const Results& results);
std::optional<Results> parseResults(std::string_view text);

struct Status {
  bool isOnline = false;
  std::string version, blocked;  // why it takes no jobs: "books-older" or nothing
  Seen now;                      // of its books
  std::optional<Seen> told;      // what it was told last to be seen
  Json printers = Json::array();
};
std::string textOf(const Status& status);
std::optional<Status> parseStatus(std::string_view text);

}  // namespace zentaro::service
