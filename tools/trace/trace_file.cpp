// Lines of a trace file, told apart by their form.
#include "tools/trace/trace_file.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/terminal/language.h"

namespace zentaro::tools {

using terminal::say;

namespace {

constexpr std::size_t hexColumn = 48;

struct Word {
  std::string_view text;
  TraceRecord::Kind kind;
};
constexpr std::array<Word, 3> words{{{"Send ", TraceRecord::Kind::Send},
                                     {"ReadStatus ", TraceRecord::Kind::ReadStatus},
                                     {"Read ", TraceRecord::Kind::Read}}};

// The digits at that place as a number; the form of the text has been checked.
int numberAt(std::string_view text, std::size_t at, std::size_t count) {
  int number = 0;
  for (const char digit : text.substr(at, count)) number = number * 10 + (digit - '0');
  return number;
}

/// "15-03-2024 14:05:09"
std::optional<std::chrono::local_seconds> timeOf(std::string_view text) {
  using namespace std::chrono;
  constexpr std::string_view form = "00-00-0000 00:00:00";
  const auto fits = [](char c, char wanted) { return wanted == '0' ? c >= '0' && c <= '9' : c == wanted; };
  if (!std::equal(text.begin(), text.end(), form.begin(), form.end(), fits)) return std::nullopt;
  const year_month_day date{year(numberAt(text, 6, 4)), month(static_cast<unsigned>(numberAt(text, 3, 2))),
                            day(static_cast<unsigned>(numberAt(text, 0, 2)))};
  const int hour = numberAt(text, 11, 2), minute = numberAt(text, 14, 2), second = numberAt(text, 17, 2);
  if (!date.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return local_days{date} + hours(hour) + minutes(minute) + seconds(second);
}

int hexValue(char digit) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  const std::size_t at = digits.find(digit);
  return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

/// The bytes in the hexadecimal column; nothing when it has another form.
std::optional<std::string> bytesOf(std::string_view line) {
  std::string column(line.substr(0, hexColumn));
  column.resize(hexColumn, ' ');
  std::string bytes;
  std::size_t at = 0;
  for (; at < hexColumn && column[at] != ' '; at += 3) {
    const int high = hexValue(column[at]), low = hexValue(column[at + 1]);
    if (high < 0 || low < 0 || column[at + 2] != ' ') return std::nullopt;
    bytes += static_cast<char>(high * 16 + low);
  }
  if (bytes.empty() || column.find_first_not_of(' ', at) != std::string::npos) return std::nullopt;
  return bytes;
}

class Parser {
 public:
  Trace parse(std::string_view text) && {
    while (!text.empty()) {
      const std::size_t end = std::min(text.find('\n'), text.size());
      std::string_view line = text.substr(0, end);
      text.remove_prefix(std::min(end + 1, text.size()));
      ++line_;
      if (line.ends_with('\r')) line.remove_suffix(1);
      if (!line.empty()) take(line);
    }
    return std::move(trace_);
  }

 private:
  void take(std::string_view line) {
    for (const auto& [word, kind] : words)
      if (line.starts_with(word)) return begin(kind, line.substr(word.size()));
    const auto bytes = bytesOf(line);
    if (!bytes)
      report(say("no es una línea con hora ni un volcado", "is neither a line with a time nor a dump"));
    else if (!isInRecord_)
      report(say("es un volcado sin línea con hora", "is a dump that belongs to no line with a time"));
    else
      trace_.records.back().bytes += *bytes;
  }

  void begin(TraceRecord::Kind kind, std::string_view stamp) {
    const auto time = timeOf(stamp.substr(0, stamp.find_last_not_of(' ') + 1));
    isInRecord_ = time.has_value();
    if (time)
      trace_.records.push_back({kind, line_, *time, {}});
    else
      report(say("no tiene una hora como 15-03-2024 14:05:09", "has no time such as 15-03-2024 14:05:09"));
  }

  void report(std::string_view problem) { trace_.malformed.push_back({line_, std::string(problem)}); }

  Trace trace_;
  int line_ = 0;
  bool isInRecord_ = false;  // whether dump lines belong to the last record
};

}  // namespace

Trace parseTrace(std::string_view text) { return Parser{}.parse(text); }

}  // namespace zentaro::tools
