// The rules of a chain: what a till does with what comes, and what the centre does with what comes back.
#include <gtest/gtest.h>

#include "service/chain/mqtt_link.h"
#include "service/chain/rules.h"

namespace zentaro::service {
namespace {

using till::Job;
using till::State;

Job kept(State state, int attempt, const std::string& digest = "2:apples") {
  Job job;
  job.id = "J-1";
  job.printer = "shop:caja";
  job.state = state;
  job.attempt = attempt;
  job.digest = digest;
  return job;
}

// Whatever comes twice, late or for the second time from a restored centre never prints a second paper.
TEST(ChainTill, AnswersWhatItKnowsAndPrintsOnlyWhatIsNewAndInTime) {
  constexpr Reply accept = Reply::Accept, refuse = Reply::Refuse, result = Reply::Result,
                  foreign = Reply::Foreign;
  struct Row {
    const char* what;
    std::optional<Job> known;
    int attempt;
    std::int64_t patience;
    Reply inOrder, notInOrder;
  };
  const Row rows[]{
      {"new", {}, 1, 60, accept, refuse},
      {"new, too late", {}, 1, 0, refuse, refuse},
      {"an attempt that began at another till", {}, 3, 60, accept, refuse},
      {"queued", kept(State::Queued, 1), 1, 60, result, result},
      {"queued, and the centre asks what came of it", kept(State::Queued, 1), 1, 0, result, result},
      {"printed, again", kept(State::Printed, 1), 1, 60, result, result},
      {"printed, and a restored centre wants a new attempt", kept(State::Printed, 1), 2, 60, result, result},
      {"unknown, and a new attempt", kept(State::Unknown, 1), 2, 60, result, result},
      {"not printed, a copy that comes late", kept(State::NotPrinted, 1), 1, 60, result, result},
      {"not printed, the next attempt", kept(State::NotPrinted, 1), 2, 60, accept, refuse},
      {"not printed, the one after another till's", kept(State::NotPrinted, 1), 3, 60, accept, refuse},
      {"not printed, the next attempt, too late", kept(State::NotPrinted, 1), 2, 0, refuse, refuse},
      {"an earlier attempt", kept(State::NotPrinted, 2), 1, 60, result, result},
      {"another job's id", kept(State::Printed, 1, "2:pears"), 1, 60, foreign, foreign},
      {"a digest by another rule", kept(State::Printed, 1, "1:x"), 1, 60, result, result},
      {"a closing under the id of a sale", kept(State::Printed, 1, "closing-Z"), 1, 60, result, result},
  };
  for (const Row& row : rows) {
    const JobMessage message{"J-1", "caja", row.attempt, row.patience, ""};
    EXPECT_EQ(replyTo(message, "2:apples", true, row.known), row.inOrder) << row.what;
    EXPECT_EQ(replyTo(message, "2:apples", false, row.known), row.notInOrder) << row.what;
  }
}

TEST(ChainTill, NoticesBooksThatNeverHeldWhatTheCentreHasSeen) {
  const std::vector<Lineage> lineages{{"a", 1}, {"b", 41}, {"c", 101}};
  struct Row {
    const char* what;
    Seen seen;
    bool areOlder;
  };
  const Row rows[]{
      {"nothing yet", {"a", 0}, false},
      {"within an earlier start", {"a", 40}, false},
      {"more of an earlier start than it had: restored since", {"a", 41}, true},
      {"the end of the last start", {"b", 100}, false},
      {"all there is", {"c", 120}, false},
      {"more than there is", {"c", 121}, true},
      {"a start that these books never had", {"d", 5}, true},
  };
  for (const Row& row : rows) EXPECT_EQ(areOlder(lineages, 120, row.seen), row.areOlder) << row.what;
  EXPECT_TRUE(areOlder({}, 0, {"a", 0})) << "a new disk";
  EXPECT_EQ(lineagesFrom(textOf(lineages)).at(1).first, 41);
}

// A thousand that one outage cut do not come back at one moment.
TEST(ChainTill, ComesBackOverTheWholeSpreadAfterACutAndSoonWhereItNeverWas) {
  struct Row {
    const char* what;
    int last;
    bool wasConnected;
    int spread, span;
  };
  const Row rows[]{
      {"at the start", 0, false, 60, 8},
      {"still none", 8, false, 60, 16},
      {"and later", 48, false, 60, 60},
      {"cut", 0, true, 60, 60},
      {"cut, and not there yet", 60, false, 60, 60},
      {"few tills", 0, false, 4, 4},
      {"many tills", 0, true, 300, 300},
      {"many tills, at the start", 0, false, 300, 8},
  };
  for (const Row& row : rows)
    EXPECT_EQ(spanOfReturn(row.last, row.wasConnected, row.spread), row.span) << row.what;
}

TEST(ChainCentre, KeepsTheMostThatWasSaidOfAJob) {
  const State all[]{State::Queued, State::Printing, State::Unknown, State::NotPrinted, State::Printed};
  for (std::size_t known = 0; known < std::size(all); ++known)
    for (std::size_t told = 0; told < std::size(all); ++told)
      EXPECT_EQ(isNews(kept(all[known], 1), kept(all[told], 1)), told > known) << known << told;
  EXPECT_TRUE(isNews(kept(State::NotPrinted, 1), kept(State::Queued, 2))) << "the next attempt";
  EXPECT_FALSE(isNews(kept(State::Printing, 2), kept(State::Printed, 1))) << "an earlier attempt";
  Job waiting = kept(State::Printing, 1);
  waiting.cause = "no paper";
  EXPECT_TRUE(isNews(kept(State::Printing, 1), waiting));
  Job told = kept(State::Printed, 1);
  told.number = 7;
  EXPECT_TRUE(isNews(kept(State::Printed, 1), told)) << "its number was found";
  told.printer = "caja";
  EXPECT_TRUE(isOrdered(kept(State::Printing, 1), "shop", told));
  EXPECT_FALSE(isOrdered(kept(State::Printing, 1), "other", told)) << "another till's job of the same name";
  EXPECT_FALSE(isOrdered(kept(State::Printing, 1, "2:pears"), "shop", told)) << "a shop's own sale";
  EXPECT_FALSE(isOrdered({}, "shop", told));
}

TEST(ChainCentre, HasSeenOnlyWhatCameWithoutAGap) {
  const Seen seen{"b", 50};
  struct Row {
    const char* what;
    std::int64_t after;
    Seen upTo;
    bool isFromStart;
    Seen result;
  };
  const Row rows[]{
      {"the next ones", 50, {"b", 60}, false, {"b", 60}},
      {"the same again", 40, {"b", 50}, false, {"b", 50}},
      {"old ones, late", 10, {"b", 20}, false, {"b", 50}},
      {"some are missing in between", 55, {"b", 60}, false, {"b", 50}},
      {"after a start of the till", 50, {"c", 51}, false, {"c", 51}},
      {"an answer out of turn", 0, {"", 0}, false, {"b", 50}},
      {"older books that a person accepted", 0, {"c", 20}, true, {"c", 20}},
      {"and what follows them", 50, {"b", 70}, true, {"b", 70}},
  };
  for (const Row& row : rows) {
    const Seen after = seenAfter(seen, {row.after, row.upTo, row.isFromStart, {}});
    EXPECT_EQ(textOf(after), textOf(row.result)) << row.what;
  }
  EXPECT_FALSE(wasRestored(seen, std::nullopt));
  EXPECT_FALSE(wasRestored(seen, Seen{"a", 50}));
  EXPECT_TRUE(wasRestored(seen, Seen{"c", 51})) << "the till was told of more";
}

TEST(ChainMessages, AreReadWholeOrNotAtAll) {
  Job job = kept(State::Printed, 2);
  job.number = 17;
  job.total = 1160;
  job.result = R"({"change":"8.40"})";
  job.before.machine = "Z1A1";
  const std::string results = textOf(Results{3, {"a", 9}, true, {job}});
  ASSERT_TRUE(parseResults(results));
  EXPECT_EQ(textOf(*parseResults(results)), results);
  const std::string wish = textOf(JobMessage{"J-1", "caja", 2, 30, R"({"price":0.10000000000000000001})"});
  ASSERT_TRUE(parseJobMessage(wish));
  EXPECT_EQ(parseJobMessage(wish)->body, R"({"price":0.10000000000000000001})")
      << "not a digit is written anew";
  for (const auto& [attempt, patience, isTaken] : {std::tuple{1, 3'600, true},
                                                   {1'000'000, 0, true},
                                                   {0, 60, false},
                                                   {1'000'001, 60, false},
                                                   {1, 3'601, false}})
    EXPECT_EQ(parseJobMessage(textOf(JobMessage{"J-1", "caja", attempt, patience, ""})).has_value(), isTaken)
        << attempt << " " << patience;
  Status status{true, "1", "", {"a", 1}, Seen{"a", 1}, Json::array()};
  status.printers.push_back({{"name", "caja"}, {"state", "ready"}, {"virtual", false}});
  ASSERT_TRUE(parseStatus(textOf(status)));
  EXPECT_FALSE(parseStatus(textOf(Status{}))->isOnline);

  // Without any of its members, or with one of another type, nothing is taken.
  for (const std::string& text : {results, wish, textOf(status), textOf(Seen{"a", 1})}) {
    const Json whole = Json::parse(text);
    const auto isTaken = [](const Json& json) {
      const std::string line = jsonLine(json);
      return parseResults(line) || parseJobMessage(line) || parseStatus(line) || parseSeen(line);
    };
    EXPECT_TRUE(isTaken(whole)) << text;
    for (const auto& [name, value] : whole.items()) {
      Json without = whole, other = whole;
      without.erase(name);
      other[name] = Json::array({1});
      EXPECT_FALSE(isTaken(without)) << text << " without " << name;
      EXPECT_FALSE(isTaken(other)) << text << " with another " << name;
    }
  }
  for (const char* topic :
       {"zentaro/1/caja 1/jobs", "zentaro/1//jobs", "zentaro/2/a/jobs", "zentaro/1/a", "", "x"})
    EXPECT_FALSE(parseTopic(topic)) << topic;
  EXPECT_EQ(parseTopic(topicOf("caja-1", "jobs"))->till, "caja-1");
}

TEST(ChainBroker, IsReachedInTheClearOnThisMachineOnly) {
  struct Row {
    const char* url;
    int port;  // 0: refused
  };
  for (const Row& row : std::initializer_list<Row>{{"mqtts://central.example", 8883},
                                                   {"mqtts://central.example:1", 1},
                                                   {"mqtts://[2001:db8::1]", 8883},
                                                   {"mqtt://127.0.0.1", 1883},
                                                   {"mqtt://[::1]:99", 99},
                                                   {"mqtt://central.example", 0},
                                                   {"mqtt://10.0.0.1", 0},
                                                   {"mqtt://12.7.0.1", 0},
                                                   {"mqtts://", 0},
                                                   {"mqtts://a:b", 0},
                                                   {"mqtts://a:0", 0},
                                                   {"mqtts://a:65535", 65535},
                                                   {"mqtts://a:65536", 0},
                                                   {"mqtts://a/b", 0},
                                                   {"mqtts://user@a", 0},
                                                   {"http://a", 0},
                                                   {"", 0}}) {
    int port = 0;
    try {
      port = parseBroker("--centre", row.url).port;
    } catch (const std::runtime_error& error) {
      EXPECT_NE(std::string(error.what()).find("--centre"), std::string::npos);
    }
    EXPECT_EQ(port, row.port) << row.url;
  }
}

}  // namespace
}  // namespace zentaro::service
