// Each command with what came before the next one.
#include "tools/trace/exchange.h"

#include <algorithm>

namespace zentaro::tools {

namespace {

std::string asOnTheLine(const TraceRecord& record, const std::optional<TracedFrame>& command) {
  const std::string& bytes = record.bytes;
  const bool isShortened = record.kind == TraceRecord::Kind::ReadStatus && command &&
                           command->frame.form == DecodedFrame::Form::Frame && !bytes.empty() &&
                           bytes.find(virtual_printer::stx) == std::string::npos &&
                           static_cast<std::uint8_t>(bytes.front()) == command->frame.content.code;
  if (!isShortened) return bytes;
  return std::string{virtual_printer::stx, command->frame.content.sequence} + bytes;
}

void addAnswer(Exchange& exchange, const TraceRecord& record) {
  const std::string bytes = asOnTheLine(record, exchange.command);
  if (!exchange.answer) {
    exchange.answer = TracedFrame{record.line, record.time, bytes, 1, {}};
  } else {
    exchange.answer->time = record.time;
    exchange.answer->bytes += bytes;
    ++exchange.answer->pieces;
  }
}

bool isOf(const TraceRecord& record, TraceRecord::Kind kind) { return record.kind == kind; }

// A file that object and driver have both written to holds everything twice; what the driver saw is kept.
std::vector<TraceRecord> once(std::vector<TraceRecord> records) {
  using Kind = TraceRecord::Kind;
  const auto holds = [&](Kind kind) {
    return std::ranges::any_of(records, [&](const TraceRecord& record) { return isOf(record, kind); });
  };
  if (!holds(Kind::Read) || !holds(Kind::ReadStatus)) return records;
  std::erase_if(records, [](const TraceRecord& record) { return isOf(record, Kind::ReadStatus); });
  const auto isDoubled = [](const TraceRecord& first, const TraceRecord& second) {
    return isOf(first, Kind::Send) && isOf(second, Kind::Send) && first.bytes == second.bytes;
  };
  records.erase(std::unique(records.begin(), records.end(), isDoubled), records.end());
  return records;
}

}  // namespace

std::vector<Exchange> exchangesOf(const std::vector<TraceRecord>& traced) {
  const std::vector<TraceRecord> records = once(traced);
  std::vector<Exchange> exchanges;
  for (const TraceRecord& record : records) {
    if (record.kind == TraceRecord::Kind::Send) {
      exchanges.push_back({TracedFrame{record.line, record.time, record.bytes, 1,
                                       decodeFrame(record.bytes, Direction::Command)},
                           std::nullopt});
    } else {
      if (exchanges.empty()) exchanges.emplace_back();
      addAnswer(exchanges.back(), record);
    }
  }
  for (Exchange& exchange : exchanges)
    if (exchange.answer) exchange.answer->frame = decodeFrame(exchange.answer->bytes, Direction::Answer);
  return exchanges;
}

}  // namespace zentaro::tools
