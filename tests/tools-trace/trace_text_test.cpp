// Traces as people read them. The frames are those of the protocol's own examples, with their sums
// worked out by hand.
#include "tools/trace/trace_text.h"

#include <gtest/gtest.h>

namespace zentaro::tools::trace_text_test {

TEST(TraceText, ShowsAnObjectTrace) {
  EXPECT_EQ(
      traceText(parseTrace("Send 15-03-2024 14:05:09\n"
                           "02 22 49 1C 48 4F 4C 41 03 30 31 42 30\n"
                           "ReadStatus 15-03-2024 14:05:09\n"
                           "49 1C 30 36 30 30 1C 33 30 38 30 03 30 32 33 39\n"
                           "Send 15-03-2024 14:05:11\n"
                           "02 23 44 1C 7F 1C 31 32 35 30 1C 54 03 30 32 35\n42\n"
                           "ReadStatus 15-03-2024 14:05:11\n"
                           "rubbish\n"
                           "Send 15-03-2024 14:05:23\n"
                           "02 24 48 03 30 30 36 46\n"
                           "ReadStatus 15-03-2024 14:05:23\n"
                           "41 42\n")),
      "    1  15-03-2024 14:05:09   +0s  -> 49 text-dnf  seq 22\n          \"HOLA\"  checksum good\n"
      "    3  15-03-2024 14:05:09   +0s  <- 49 text-dnf  seq 22  status 0600 3080\n          checksum good\n"
      "    5  15-03-2024 14:05:11   +2s  -> 44 payment   seq 23\n          \"\", \"1250\", \"T\"  checksum good\n"
      "    8  15-03-2024 14:05:11   +0s  <- nothing\n"
      "   10  15-03-2024 14:05:23  +12s  -> 48 open-dnf  seq 24  checksum BAD (006F)\n"
      "   12  15-03-2024 14:05:23   +0s  <- no complete frame: 41 42\n"
      "line 9 is neither a line with a time nor a dump\n");
}

// Too short to be a frame: nothing is made up.
TEST(TraceText, TakesNoFrameWithoutACommandForOne) {
  EXPECT_EQ(traceText(parseTrace("ReadStatus 15-03-2024 14:05:09\n02 22 03 30 30 32 37\n")),
            "    1  15-03-2024 14:05:09   +0s  <- no complete frame: 02 22 03 30 30 32 37\n");
}

TEST(TraceText, ShowsADriverTrace) {
  EXPECT_EQ(
      traceText(parseTrace("Read 15-03-2024 14:05:08\n"
                           "0C\n"
                           "Send 15-03-2024 14:05:09\n"
                           "02 22 48 03 30 30 36 46\n"
                           "Read 15-03-2024 14:05:10\n"
                           "0C\n"
                           "Read 15-03-2024 14:05:11\n"
                           "0C 02 22 48 1C 30 36 30 30 1C 33 30 38 30 03\n"
                           "Read 15-03-2024 14:05:12\n"
                           "30 32 33 38\n"
                           "Send 15-03-2024 14:05:12\n"
                           "07 08 09 0A 0B 0C 0D 0E 0F 10 11\n"
                           "Send 15-03-2024 14:05:12\n"
                           "02 23 99 03 30 30 43 31\n"
                           "Read 15-03-2024 14:05:12\n"
                           "02 22 48 1C 30 36 30 30 1C 33 30 38 30 03 30 32\n33 39\n")),
      "    1  15-03-2024 14:05:08   +0s  <- nothing\n"
      "    3  15-03-2024 14:05:09   +1s  -> 48 open-dnf  seq 22  checksum good\n"
      "    5  15-03-2024 14:05:12   +3s  <- 48 open-dnf  seq 22  status 0600 3080\n          checksum good  in 3 pieces\n"
      "   11  15-03-2024 14:05:12   +0s  -> reset sequence\n"
      "   13  15-03-2024 14:05:12   +0s  -> 99 ?         seq 23  checksum good\n"
      "   15  15-03-2024 14:05:12   +0s  <- 48 open-dnf  seq 22  status 0600 3080\n          checksum BAD (0239)"
      "  NOT THE SEQUENCE that was asked  NOT THE COMMAND that was asked\n");
}

TEST(TraceText, JudgesChecksums) {
  const auto judged = [](const std::string& kind, const std::string& dump) {
    const std::string text = traceText(parseTrace(kind + " 15-03-2024 14:05:09\n" + dump + "\n"));
    return text.find("checksum good") != std::string::npos;
  };
  std::string large = "02 22 49 1C";  // and 600 times z: 73,340, which is 11E7C
  for (int count = 0; count < 600; ++count) large += (count % 16 == 0 ? "\n" : " ") + std::string("7A");
  EXPECT_TRUE(judged("Send", large + "\n03 31 31 45 37 43")) << "a command has all digits";
  EXPECT_FALSE(judged("Send", large + "\n03 31 45 37 43"));
  EXPECT_TRUE(judged("Send", "02 22 48 03 30 30 36 46"));
  EXPECT_FALSE(judged("Send", "02 22 48 03 30 36 46")) << "three digits are too few";
}

// Cut anywhere, a frame is shown as what is left of it.
TEST(TraceText, SurvivesCutFrames) {
  const std::string dump = "02 22 49 1C 30 36 30 30 1C 33 30 38 30 03 30 32 ";
  for (std::size_t size = 3; size <= dump.size(); size += 3) {
    const std::string text =
        traceText(parseTrace("Send 15-03-2024 14:05:09\n" + dump.substr(0, size) +
                             "\nReadStatus 15-03-2024 14:05:09\n" + dump.substr(0, size) + "\n"));
    const bool hasEnd = size >= dump.find("03") + 2;
    EXPECT_NE(text.find(hasEnd ? "<- 49 text-dnf" : "<- no complete frame: 02"), std::string::npos) << text;
  }
}

}  // namespace zentaro::tools::trace_text_test
