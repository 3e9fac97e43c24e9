// Columns for what every frame has, a line below it for the rest.
#include "tools/trace/trace_text.h"

#include <array>
#include <cstdio>

#include "base/terminal/language.h"
#include "virtual-printer/device/commands.h"
#include "virtual-printer/wire/codepage.h"

namespace zentaro::tools {

namespace {

using Form = DecodedFrame::Form;
using terminal::say;
using virtual_printer::hexadecimal;

constexpr std::size_t fieldColumn = 10;  // in a line of their own, which then fits a terminal

std::string fieldsText(const std::vector<std::string>& fields, std::size_t first) {
  std::string text;
  for (std::size_t i = first; i < fields.size(); ++i)
    text += (text.empty() ? "" : ", ") + ("\"" + virtual_printer::utf8FromWire(fields[i]) + "\"");
  return text.empty() ? text : "  " + text;
}

std::string statusText(const std::vector<std::string>& fields) {
  const auto word = [&](std::size_t index) {
    return index < fields.size() ? virtual_printer::utf8FromWire(fields[index]) : say("ninguna", "none");
  };
  return say("  estado {} {}", "  status {} {}", {word(0), word(1)});
}

std::string checksumText(const DecodedFrame& frame) {
  if (frame.isChecksumGood) return say("  suma correcta", "  checksum good");
  return say("  suma ERRADA ({})", "  checksum BAD ({})", {virtual_printer::utf8FromWire(frame.checksum)});
}

std::string frameText(const DecodedFrame& frame, Direction direction, FieldTexts wanted) {
  const virtual_printer::Command& content = frame.content;
  const virtual_printer::CommandEntry* known = virtual_printer::findCommand(content.code);
  std::array<char, 64> head{};
  std::snprintf(head.data(), head.size(), "%02X %-9s seq %02X", static_cast<unsigned>(content.code),
                known == nullptr ? "?" : known->name,
                static_cast<unsigned>(static_cast<unsigned char>(content.sequence)));
  const bool isAnswer = direction == Direction::Answer;
  const std::string fields =
      wanted == FieldTexts::Shown ? fieldsText(content.fields, isAnswer ? 2 : 0) : std::string();
  const std::string gap = isAnswer || !fields.empty() ? "\n" + std::string(fieldColumn - 2, ' ') : "";
  return head.data() + (isAnswer ? statusText(content.fields) : std::string()) + gap + fields +
         checksumText(frame);
}

std::string junkText(const std::string& bytes) {
  constexpr std::size_t most = 32;
  std::string text = say("trama incompleta:", "no complete frame:");
  for (const char byte : bytes.substr(0, most))
    text += " " + hexadecimal(static_cast<unsigned char>(byte), 2);
  return bytes.size() > most ? text + " ..." : text;
}

std::string contentText(const TracedFrame& traced, Direction direction, FieldTexts wanted) {
  switch (traced.frame.form) {
    case Form::Nothing: return say("nada", "nothing");
    case Form::Frame: return frameText(traced.frame, direction, wanted);
    case Form::Reset: return say("secuencia de reinicio", "reset sequence");
    case Form::Junk: break;
  }
  return wanted == FieldTexts::Shown ? junkText(traced.bytes) : say("trama incompleta", "no complete frame");
}

/// What is odd about an answer to that command.
std::string remarks(const Exchange& exchange) {
  std::string text;
  if (exchange.answer->pieces > 1)
    text += say("  en {} pedazos", "  in {} pieces", {std::to_string(exchange.answer->pieces)});
  if (!exchange.command || exchange.answer->frame.form != Form::Frame) return text;
  const virtual_printer::Command &asked = exchange.command->frame.content,
                                 &given = exchange.answer->frame.content;
  if (given.sequence != asked.sequence)
    text += say("  NO ES LA SECUENCIA pedida", "  NOT THE SEQUENCE that was asked");
  if (given.code != asked.code) text += say("  NO ES EL COMANDO pedido", "  NOT THE COMMAND that was asked");
  return text;
}

class Writer {
 public:
  explicit Writer(FieldTexts wanted) : texts_(wanted) {}

  void write(const TracedFrame& traced, Direction direction, const std::string& behind) {
    const auto sinceLast = text_.empty() ? std::chrono::seconds(0) : traced.time - last_;
    last_ = traced.time;
    std::array<char, 64> head{};
    const auto days = std::chrono::floor<std::chrono::days>(traced.time);
    const std::chrono::year_month_day date(days);
    const std::chrono::hh_mm_ss time(traced.time - days);
    std::snprintf(head.data(), head.size(), "%5d  %02u-%02u-%04d %02d:%02d:%02d %+4ds  ", traced.line,
                  static_cast<unsigned>(date.day()), static_cast<unsigned>(date.month()),
                  static_cast<int>(date.year()), static_cast<int>(time.hours().count()),
                  static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()),
                  static_cast<int>(sinceLast.count()));
    text_ += head.data();
    text_ += (direction == Direction::Command ? "-> " : "<- ") + contentText(traced, direction, texts_) +
             behind + "\n";
  }

  std::string text() && { return std::move(text_); }

 private:
  FieldTexts texts_;
  std::string text_;
  std::chrono::local_seconds last_{};
};

}  // namespace

std::string traceText(const Trace& trace, FieldTexts wanted) {
  Writer writer(wanted);
  for (const Exchange& exchange : exchangesOf(trace.records)) {
    if (exchange.command) writer.write(*exchange.command, Direction::Command, "");
    if (exchange.answer) writer.write(*exchange.answer, Direction::Answer, remarks(exchange));
  }
  std::string text = std::move(writer).text();
  for (const auto& [line, problem] : trace.malformed)
    text += say("línea {} {}\n", "line {} {}\n", {std::to_string(line), problem});
  return text;
}

}  // namespace zentaro::tools
