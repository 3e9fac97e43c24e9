// Recorded answers, moved to the sequence number of whoever asks. Sums are worked out by hand.
#include "tools/trace/script.h"

#include <gtest/gtest.h>

#include "support/bytes.h"

namespace zentaro::tools::script_test {

using testing::bytes;

// A driver trace of these frames, ">" before what was sent.
Script scriptOf(const std::vector<std::string>& frames) {
  std::string trace;
  for (const std::string& frame : frames) {
    trace += (frame[0] == '>' ? "Send" : "Read") + std::string(" 15-03-2024 14:05:09\n");
    for (const char byte : bytes(frame.substr(frame[0] == '>' ? 1 : 0))) {
      char pair[8];
      std::snprintf(pair, sizeof pair, "%02X ", static_cast<unsigned char>(byte));
      trace += pair;
    }
    trace += "\n";
  }
  return Script(exchangesOf(parseTrace(trace).records));
}

TEST(Script, MovesSequenceAndChecksumToTheRequest) {
  const struct {
    const char *name, *recorded;
    char sequence;
    const char* answer;
  } rows[] = {
      {"same sequence", "<STX>\"I<FS>6<ETX>00C2", '"', "<STX>\"I<FS>6<ETX>00C2"},
      {"another one", "<STX>\"I<FS>6<ETX>00C2", '\x7F', "<STX><DEL>I<FS>6<ETX>011F"},
      {"a lower one", "<STX>\"I<FS>6<ETX>00C2", '!', "<STX>!I<FS>6<ETX>00C1"},
      {"behind wait bytes", "<WAIT><WAIT><STX>\"I<FS>6<ETX>00C2", '#', "<WAIT><WAIT><STX>#I<FS>6<ETX>00C3"},
      {"a wrong checksum stays wrong by one", "<STX>\"I<FS>6<ETX>00C3", '#', "<STX>#I<FS>6<ETX>00C4"},
      {"the sequence before stays the one before", "<STX>!I<FS>6<ETX>00C1", '!', "<STX><DEL>I<FS>6<ETX>011F"},
      {"digits that are none stay", "<STX>\"I<FS>6<ETX>XXXX", '#', "<STX>#I<FS>6<ETX>XXXX"},
      {"cut short", "<STX>\"I<FS>0", '#', "<STX>\"I<FS>0"},
  };
  for (const auto& row : rows) {
    Script script = scriptOf({"><STX>\"I<FS>HOLA<ETX>01B0", row.recorded});
    EXPECT_EQ(script.answer({row.sequence, 0x49, {}}).bytes, bytes(row.answer)) << row.name;
  }
}

TEST(Script, GivesTheAnswersOfEachCommandInTheirOrder) {
  Script script = scriptOf(
      {"><STX>\"I<ETX>0070", "A", "><STX>#H<ETX>0070", "B", "><STX>$I<ETX>0072", "><STX>%I<ETX>0073", "C"});
  EXPECT_EQ(script.left(), 4U);
  EXPECT_EQ(script.answer({'!', 0x48, {}}).bytes, "B");
  EXPECT_EQ(script.answer({'!', 0x49, {}}).bytes, "A");
  const Script::Reply silent = script.answer({'!', 0x49, {}});
  EXPECT_TRUE(silent.isRecorded && silent.bytes.empty());
  EXPECT_EQ(script.answer({'!', 0x49, {}}).bytes, "C");
  EXPECT_EQ(script.left(), 0U);
  EXPECT_FALSE(script.answer({'!', 0x49, {}}).isRecorded);
}

}  // namespace zentaro::tools::script_test
