// What was sent and what came back, put together from the records of a trace.
#pragma once

#include <optional>
#include <vector>

#include "tools/trace/decoded_frame.h"
#include "tools/trace/trace_file.h"

namespace zentaro::tools {

struct TracedFrame {
  int line = 0;
  std::chrono::local_seconds time{};  // of the last piece; the object trace knows only when the wait began
  std::string bytes;                  // as on the line
  int pieces = 1;
  DecodedFrame frame;
};

struct Exchange {
  std::optional<TracedFrame> command;  // none for bytes that came before the first command of the trace
  std::optional<TracedFrame> answer;   // none when the trace shows nothing of one
};

/// Of a file with both traces the driver's is taken. The object trace keeps of a good answer only
/// what begins with its command code; the bytes before it are put back.
std::vector<Exchange> exchangesOf(const std::vector<TraceRecord>& records);

}  // namespace zentaro::tools
