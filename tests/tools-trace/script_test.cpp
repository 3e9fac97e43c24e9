// Recorded answers, moved to the sequence number of whoever asks. Sums are worked out by hand.
#include "trace/script.h"

#include <gtest/gtest.h>

namespace zentaro::tools {
namespace {

// A text line with sequence 22 and its answer, as the driver trace has them.
Script scriptOf(const std::string& answers) {
  return Script(exchangesOf(
      parseTrace("Send 15-03-2024 14:05:09\n02 22 49 1C 48 4F 4C 41 03 30 31 42 30\n" + answers).records));
}

std::string read(const std::string& dump) { return "Read 15-03-2024 14:05:09\n" + dump + "\n"; }

TEST(Script, MovesSequenceAndChecksumToTheRequest) {
  struct {
    const char* name;
    const char* recorded;
    char sequence;
    std::string answer;
  } const rows[] = {
      {"same sequence", "02 22 49 1C 30 36 30 30 1C 33 30 38 30 03 30 32\n33 39", '\x22',
       "\x02\x22I\x1C"
       "0600\x1C"
       "3080\x03"
       "0239"},
      {"another one", "02 22 49 1C 30 36 30 30 1C 33 30 38 30 03 30 32\n33 39", '\x7F',
       "\x02\x7FI\x1C"
       "0600\x1C"
       "3080\x03"
       "0296"},
      {"behind wait bytes", "0C 0C 02 22 49 1C 30 1C 30 03 30 30 45 42", '\x23',
       "\x0C\x0C\x02\x23I\x1C"
       "0\x1C"
       "0\x03"
       "00EC"},
      {"a wrong checksum stays wrong by one", "02 22 49 1C 30 36 30 30 1C 33 30 38 30 03 30 32\n33 41",
       '\x23',
       "\x02\x23I\x1C"
       "0600\x1C"
       "3080\x03"
       "023B"},
      {"the sequence before stays the one before", "02 21 49 1C 30 36 30 30 1C 33 30 38 30 03 30 32\n33 38",
       '\x21',
       "\x02\x7FI\x1C"
       "0600\x1C"
       "3080\x03"
       "0296"},
      {"digits that are none stay", "02 22 49 1C 30 1C 30 03 58 58 58 58", '\x23',
       "\x02\x23I\x1C"
       "0\x1C"
       "0\x03"
       "XXXX"},
      {"cut short", "02 22 49 1C 30", '\x23',
       "\x02\x22I\x1C"
       "0"},
  };
  for (const auto& row : rows) {
    Script script = scriptOf(read(row.recorded));
    EXPECT_EQ(script.answer({row.sequence, 0x49, {}}).bytes, row.answer) << row.name;
  }
}

TEST(Script, GivesTheAnswersOfEachCommandInTheirOrder) {
  Script script = scriptOf(read("41") + "Send 15-03-2024 14:05:10\n02 23 48 03 30 30 37 30\n" + read("42") +
                           "Send 15-03-2024 14:05:11\n02 24 49 03 30 30 37 32\n"
                           "Send 15-03-2024 14:05:12\n02 25 49 03 30 30 37 33\n" +
                           read("43"));
  EXPECT_EQ(script.left(), 4U);
  EXPECT_EQ(script.answer({'!', 0x48, {}}).bytes, "B");
  EXPECT_EQ(script.answer({'!', 0x49, {}}).bytes, "A");
  const Script::Reply silent = script.answer({'!', 0x49, {}});
  EXPECT_TRUE(silent.isRecorded);
  EXPECT_EQ(silent.bytes, "");
  EXPECT_EQ(script.answer({'!', 0x49, {}}).bytes, "C");
  EXPECT_EQ(script.left(), 0U);
  EXPECT_FALSE(script.answer({'!', 0x49, {}}).isRecorded);
  EXPECT_FALSE(script.answer({'!', 0x38, {}}).isRecorded);
}

}  // namespace
}  // namespace zentaro::tools
