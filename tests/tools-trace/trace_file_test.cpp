// What is a record of a trace file, and what is passed over.
#include "tools/trace/trace_file.h"

#include <gtest/gtest.h>

namespace zentaro::tools::trace_file_test {

using Kind = TraceRecord::Kind;

TEST(TraceFile, HoldsTheRecordsOfBothKinds) {
  const Trace trace = parseTrace(
      "Send 15-03-2024 14:05:09\r\n"
      "02 22 49 1C 48 4F 4C 41 20 41 20 54 4F 44 4F 53 .\"I.HOLA A TODOS\r\n"
      "03                                              .\r\n"
      "ReadStatus 15-03-2024 14:05:10\r\n"
      "Read 01-01-2025 00:00:00\n"
      "0C C8\n");
  ASSERT_TRUE(trace.malformed.empty()) << trace.malformed[0].line << trace.malformed[0].problem;
  ASSERT_EQ(trace.records.size(), 3U);
  EXPECT_EQ(trace.records[0].kind, Kind::Send);
  EXPECT_EQ(trace.records[0].bytes, "\x02\"I\x1CHOLA A TODOS\x03");
  EXPECT_EQ(trace.records[1].kind, Kind::ReadStatus);
  EXPECT_EQ(trace.records[1].line, 4);
  EXPECT_EQ(trace.records[1].bytes, "");
  EXPECT_EQ((trace.records[1].time - trace.records[0].time).count(), 1);
  EXPECT_EQ(trace.records[2].kind, Kind::Read);
  EXPECT_EQ(trace.records[2].bytes, "\x0C\xC8") << "blanks at the end of a line may be lost";
}

TEST(TraceFile, PassesOverLinesOfAnotherForm) {
  struct {
    const char* line;
    const char* problem;
  } const rows[] = {
      {"Send 15-03-2024", "has no time"},
      {"Send 31-02-2024 14:05:09", "has no time"},
      {"Read 15-03-2024 24:00:00", "has no time"},
      {"Sent 15-03-2024 14:05:09", "is neither"},
      {"02 2", "is neither"},
      {"02 2g 38                                        ...", "is neither"},
      {"02  22                                          ...", "is neither"},
      {"02-22-38", "is neither"},
      {" ", "is neither"},
  };
  for (const auto& row : rows) {
    const Trace trace =
        parseTrace("Send 15-03-2024 14:05:09\n" + std::string(row.line) + "\nRead 15-03-2024 14:05:10\n41\n");
    ASSERT_EQ(trace.malformed.size(), 1U) << row.line;
    EXPECT_EQ(trace.malformed[0].line, 2) << row.line;
    EXPECT_EQ(trace.malformed[0].problem.rfind(row.problem, 0), 0U) << row.line << trace.malformed[0].problem;
    ASSERT_EQ(trace.records.size(), 2U) << row.line;
    EXPECT_EQ(trace.records[1].bytes, "A") << row.line;
  }
}

TEST(TraceFile, GivesNoBytesToALineThatCouldNotBeRead) {
  const Trace trace = parseTrace("41\nSend 15-03-2024 14:05:09\n42\nSend yesterday\n43\n");
  ASSERT_EQ(trace.records.size(), 1U);
  EXPECT_EQ(trace.records[0].bytes, "B");
  ASSERT_EQ(trace.malformed.size(), 3U);
  EXPECT_EQ(trace.malformed[0].line, 1);
  EXPECT_EQ(trace.malformed[2].line, 5);
}

}  // namespace zentaro::tools::trace_file_test
