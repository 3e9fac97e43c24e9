// Reads a trace file of either kind into its records. A record is a line with a word and a time, and the
// bytes of the dump lines below it:
//
//   Send 15-03-2024 14:05:09
//   02 38 1C 4E 03                                  .8.N.
//
// The object trace has "Send" and "ReadStatus", the driver trace "Send" and "Read".
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace zentaro::tools {

struct TraceRecord {
  enum class Kind { Send, ReadStatus, Read };
  Kind kind = Kind::Send;
  int line = 0;  // of the file, from 1
  std::chrono::local_seconds time{};
  std::string bytes;
};

struct MalformedLine {
  int line = 0;
  std::string problem;
};

struct Trace {
  std::vector<TraceRecord> records;
  std::vector<MalformedLine> malformed;  // passed over
};

/// Lines may end with LF alone, and blanks at their end may be missing: mail programs and editors do that.
Trace parseTrace(std::string_view text);

}  // namespace zentaro::tools
