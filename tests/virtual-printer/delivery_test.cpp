// What faults and the speed of the line make of one answer.
#include "virtual-printer/faults/delivery.h"

#include <gtest/gtest.h>

#include "bench.h"

namespace virtual_printer::delivery_test {

using zentaro::testing::bytes;

const std::string answer = bytes("<STX>\"I<FS>0600<FS>3080<ETX>0239");
const std::string previous = bytes("<STX>!H<FS>0600<FS>3080<ETX>0237");

// "time:bytes" for each chunk, in milliseconds.
std::string told(const std::vector<Chunk>& chunks) {
  std::string text;
  for (const Chunk& chunk : chunks) {
    const bool isWait = chunk.bytes == "\x0C";
    text +=
        std::to_string(chunk.after.count()) + ":" + (isWait ? "W" : std::to_string(chunk.bytes.size())) + " ";
  }
  return text;
}

TEST(Delivery, CorruptsExactlyWhatTheFaultSays) {
  const struct {
    const char* plan;
    std::string frame;
  } rows[] = {
      {"paper-near-end", answer},
      {"lose-answer", ""},
      {"bad-checksum", bytes("<STX>\"I<FS>0600<FS>3080<ETX>023A")},
      {"bad-sequence", bytes("<STX>#I<FS>0600<FS>3080<ETX>023A")},  // its checksum is right
      {"repeat-answer", previous},
      {"noise=before", bytes("<FF><15>~<A5><FE>") + answer},
      {"noise=inside", bytes("<STX>\"I<FS>0600<FS>3080<FF><15>~<A5><FE><ETX>0239")},
      {"truncate=4", bytes("<STX>\"I<FS>")},
      {"truncate=999", answer},
      {"noise=before;truncate=7", bytes("<FF><15>~<A5><FE><STX>\"")},
      {"bad-sequence;bad-checksum", bytes("<STX>#I<FS>0600<FS>3080<ETX>023B")},
      {"truncate=4;lose-answer", ""},
  };
  for (const auto& row : rows)
    EXPECT_EQ(corrupted(answer, parsePlan(row.plan), previous), row.frame) << row.plan;
}

TEST(Delivery, TheLastSequenceNumberIsFollowedByTheFirst) {
  const std::string last = bytes("<STX><DEL>I<FS>0600<FS>3080<ETX>0296");
  EXPECT_EQ(corrupted(last, parsePlan("bad-sequence"), {}), bytes("<STX>!I<FS>0600<FS>3080<ETX>0238"));
}

TEST(Delivery, ArrivesWhenTheFaultSays) {
  const struct {
    const char* plan;
    Pace pace;
    const char* chunks;
  } rows[] = {
      {"paper-near-end", {}, "0:18 "},
      {"delay=11", {}, "11000:18 "},
      {"wait=0.5", {}, "0:W 200:W 400:W 500:18 "},
      {"delay=1;wait=0.3", {}, "1000:W 1200:W 1300:18 "},
      {"pieces=8", {}, "0:8 20:8 40:2 "},
      {"delay=1;pieces=10", {}, "1000:10 1020:8 "},
      {"truncate=3;pieces=2", {}, "0:2 20:1 "},
      {"truncate=3", {true, std::chrono::milliseconds{250}}, "0:W 200:W 251:1 252:1 253:1 "},
  };
  for (const auto& row : rows) {
    const std::vector<Fault> plan = parsePlan(row.plan);
    EXPECT_EQ(told(schedule(corrupted(answer, plan, {}), plan, row.pace)), row.chunks) << row.plan;
  }
}

TEST(Delivery, AnAnswerNeverOvertakesTheOneBefore) {
  bench::Till till;
  till.faults.add(parsePlan("delay=13 on clock"));
  EXPECT_EQ(till.exchange("59"), "");
  till.wait(std::chrono::seconds{12});
  EXPECT_EQ(till.exchange("80"), "") << "the printer is still busy";
  till.wait(std::chrono::seconds{1});
  const std::string late = till.arrived();
  EXPECT_EQ(late[1], till.sequence - 1);
  EXPECT_EQ(late[late.find('\x02', 1) + 1], till.sequence);
}

TEST(Delivery, AnAnswerThatWasLostCanStillBeRepeated) {
  bench::Till till;
  till.faults.add(parsePlan("lose-answer on clock; repeat-answer on serial"));
  EXPECT_EQ(till.say("59"), "no answer");
  EXPECT_EQ(till.say("80"), "261124|150400") << "the answer of the clock";
}

TEST(Delivery, RealtimeTakesTheTimeOfTheLineAndOfThePrintingHead) {
  bench::Till till{{}, Speed::Realtime};
  const std::string first = till.exchange("59");
  EXPECT_EQ(first, bytes("<WAIT>"));
  std::string rest;
  while (till.engine.nextDue()) {
    till.now.steady = *till.engine.nextDue();
    rest += till.arrived();
  }
  // 8 bytes of command and 32 of answer at 960 a second, rounded down in two parts
  EXPECT_EQ(rest.size(), 32U);
  EXPECT_EQ(till.now.steady, std::chrono::milliseconds{1000 + 8 + 33});
  till.exchange("4B");
  const auto begin = till.now.steady;
  till.exchange("48");
  while (till.engine.nextDue()) {
    till.now.steady = *till.engine.nextDue();
    till.arrived();
  }
  EXPECT_GT(till.now.steady - begin, std::chrono::milliseconds{8 * 50}) << "eight lines of heading";
}

TEST(Delivery, EveryStrikeIsReported) {
  bench::Till till;
  till.faults.add(parsePlan("bad-checksum on clock; power-cut=1 on serial"));
  till.say("59");
  till.exchange("80");
  till.wait(std::chrono::seconds{1});
  till.arrived();
  till.engine.receive("abc", till.now);
  std::string story;
  for (const Event& event : till.events) {
    constexpr std::array<const char*, 6> kinds{"command", "answer", "noise", "reset", "fault", "power"};
    story += std::string{kinds[static_cast<std::size_t>(event.kind)]} + " " + event.name +
             (event.kind == EventKind::Noise ? event.bytes : "") + "\n";
  }
  EXPECT_EQ(story,
            "command clock\nfault bad-checksum on clock once\nanswer clock\n"
            "command serial\nfault power-cut=1 on serial once\npower off\npower on\nnoise abc\n");
}

}  // namespace virtual_printer::delivery_test
