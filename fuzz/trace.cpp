// Trace files. What is read of one, written again as the library writes it, is read as the same.
#include "check.h"
#include "serial/trace_text.h"
#include "text/code_page.h"
#include "tools/trace/script.h"
#include "tools/trace/trace_text.h"

namespace {

using namespace zentaro::tools;
using fuzz::require;

zentaro::LocalTime partsOf(std::chrono::local_seconds time) {
  using namespace std::chrono;
  const auto day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss clock(time - day);
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          static_cast<int>(clock.hours().count()),
          static_cast<int>(clock.minutes().count()),
          static_cast<int>(clock.seconds().count())};
}

std::string written(const TraceRecord& record) {
  static constexpr const char16_t* words[] = {u"Send", u"ReadStatus", u"Read"};
  const auto& page = zentaro::windows1252();
  std::string lines =
      page.bytes(zentaro::stampLine(words[static_cast<int>(record.kind)], partsOf(record.time))) + "\r\n";
  for (const std::u16string& line : zentaro::dumpLines(page.text(record.bytes), page))
    lines += page.bytes(line) + "\r\n";
  return lines;
}

// A byte above the blank whose character is a line feed for no program stays in the text column; a line feed
// there would cut the line, but the library shows it as a point.
void checkAgain(const Trace& trace) {
  std::string text;
  for (const TraceRecord& record : trace.records) text += written(record);
  const Trace again = parseTrace(text);
  require(again.malformed.empty(), "what the library writes is never malformed");
  require(again.records.size() == trace.records.size(), "no record is lost");
  for (std::size_t i = 0; i < trace.records.size(); ++i) {
    const TraceRecord &a = trace.records[i], &b = again.records[i];
    require(a.kind == b.kind && a.time == b.time && a.bytes == b.bytes, "each record is read as written");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Trace trace = parseTrace(fuzz::textOf(data, size));
  checkAgain(trace);
  traceText(trace);
  const std::vector<Exchange> exchanges = exchangesOf(trace.records);
  Script script(exchanges);
  for (const Exchange& exchange : exchanges) {
    if (!exchange.command) continue;
    const std::size_t left = script.left();
    script.answer(exchange.command->frame.content);
    require(script.left() <= left, "an answer that was given is not left");
  }
  return 0;
}
