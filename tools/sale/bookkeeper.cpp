// The shell around the rules of the journal.
#include "tools/sale/bookkeeper.h"

#include <algorithm>
#include <ctime>
#include <iomanip>
#include <iostream>
#include <sstream>

#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "till/books/recorder.h"
#include "tools/sale/verdict.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;

namespace {

std::string timeText(std::int64_t at, const char* form) {
  const std::time_t moment = at;
  std::tm parts{};
  ::localtime_r(&moment, &parts);
  std::ostringstream text;
  text << std::put_time(&parts, form);
  return text.str();
}

// "14:05", with the day unless it is today.
std::string momentText(std::int64_t at) {
  const bool isToday = timeText(at, "%F") == timeText(std::time(nullptr), "%F");
  return timeText(at, isToday ? "%H:%M" : "%F %H:%M");
}

std::optional<JournalVerdict> verdictOf(const Ruling& finding) {
  if (finding.answer == Answer::Print) return std::nullopt;
  const Entry& entry = *finding.entry;
  const std::string when = momentText(entry.at), number = numberText(entry.number);
  switch (finding.answer) {
    case Answer::Print: break;
    case Answer::AlreadyPrinted:
      return JournalVerdict{
          0, "already-printed",
          say("YA IMPRESO. La venta \"{}\" de las {} se imprimió como {}; no se envió nada.",
              "ALREADY PRINTED. The sale \"{}\" of {} was printed as {}; nothing was sent.",
              {harmless(entry.key), when, number}),
          entry.number};
    case Answer::OtherContent:
      return JournalVerdict{
          2, "other-content",
          say("NO IMPRESO. El id \"{}\" es de otra venta, de las {}; no se envió nada.",
              "NOT PRINTED. The id \"{}\" belongs to another sale, of {}; nothing was sent.",
              {harmless(entry.key), when}),
          std::nullopt};
    case Answer::PrintedUntold:
      return JournalVerdict{
          6, "printed-before",
          say("NO IMPRESO. La venta de las {} se imprimió como {}; --again si es otro cliente.",
              "NOT PRINTED. The sale of {} was printed as {}; --again for a new customer.", {when, number}),
          entry.number};
    case Answer::StillUnknown:
      return JournalVerdict{
          4, "unknown",
          say("NO SE SABE qué fue de la venta de las {} ({}). Mire el papel y dígalo con --resolve printed o "
              "--resolve not-printed.",
              "UNKNOWN what became of the sale of {} ({}). Look at the paper and say so with --resolve printed "
              "or --resolve not-printed.",
              {when, harmless(entry.device)}),
          entry.number};
  }
  return std::nullopt;
}

void tell(const Entry& entry) {
  const std::string when = momentText(entry.at);
  std::cerr << "zentaro: "
            << (entry.fact == Fact::Printed
                    ? say("la venta de las {} se imprimió como {}", "the sale of {} was printed as {}",
                          {when, numberText(entry.number)})
                : entry.fact == Fact::NotPrinted
                    ? say("la venta de las {} no se imprimió", "the sale of {} was not printed", {when})
                    : say("no se sabe si la venta de las {} se imprimió",
                          "it is not known whether the sale of {} was printed", {when}))
            << '\n';
}

}  // namespace

std::optional<JournalVerdict> Bookkeeper::beforePort() const {
  const std::vector<Entry> entries = journal_.entries();
  return verdictOf(lookUp(entries, wish_));
}

std::optional<JournalVerdict> Bookkeeper::beforePrinting() const {
  std::vector<Entry> entries = journal_.entries();
  std::optional<JournalVerdict> verdict = verdictOf(mayPrint(entries, wish_));
  if (verdict || !wish_.again) return verdict;
  for (Entry& entry : entries) {
    if (entry.digest != wish_.digest || entry.fact != Fact::Printed || entry.isTold) continue;
    entry.isTold = true;
    journal_.keep(entry);
  }
  return std::nullopt;
}

void Bookkeeper::judge(const std::string& machine, const std::optional<int>& lastZ, CZentaro& printer,
                       PrinterLine& line) {
  for (const Entry& entry : journal_.entries())
    if (entry.machine == machine && isOpenQuestion(entry)) judgeOne(entry, lastZ, printer, line);
}

void Bookkeeper::judgeOne(Entry entry, const std::optional<int>& lastZ, CZentaro& printer,
                          PrinterLine& line) {
  ObjectSalePrinter asked(printer, line, entry.isCreditNote);
  const std::optional<Counters> now = asked.counters();
  if (!now) return;
  Fact fact = Fact::Unknown;
  switch (openQuestion(entry, *now, lastZ)) {
    case Question::Countable:
      fact = factOf(judgedByCounters(entry.before, *now, entry.net));
      if (fact == Fact::Printed) entry.number = now->lastNumber;
      break;
    case Question::ItsDocument: {
      std::cerr << say("zentaro: queda abierto el documento de las {}; se termina\n",
                       "zentaro: the document of {} is still open; ending it\n", {momentText(entry.at)});
      const SaleEnd end = endSale(entry.before, entry.net, asked, std::cerr, nullptr);
      fact = factOf(end.verdict);
      if (end.number) entry.number = end.number;
      break;
    }
    case Question::OthersDocument:
    case Question::TooLate: break;
  }
  const bool isNews = entry.fact != fact;
  entry.fact = fact;
  if (!isNews) return;
  journal_.keep(entry);
  tell(entry);
}

std::optional<JournalVerdict> Bookkeeper::resolve(Fact fact) {
  for (Entry entry : journal_.entries()) {
    const bool isMeant = wish_.key.empty() ? entry.digest == wish_.digest : entry.key == wish_.key;
    if (!isMeant || !isOpenQuestion(entry)) continue;
    entry.fact = fact;
    entry.isTold = true;
    journal_.keep(entry);
    return JournalVerdict{
        0, "resolved",
        say("Anotado en el diario: la venta de las {} {}. No se envió nada.",
            "Noted in the journal: the sale of {} was {}. Nothing was sent.",
            {momentText(entry.at),
             fact == Fact::Printed ? say("se imprimió", "printed") : say("no se imprimió", "not printed")}),
        entry.number};
  }
  return std::nullopt;
}

std::string listText(const std::vector<Entry>& entries) {
  if (entries.empty()) return std::string(say("El diario está vacío.\n", "The journal is empty.\n"));
  const auto keyOf = [](const Entry& entry) { return harmless(entry.key.empty() ? "-" : entry.key); };
  std::size_t width = 0;
  for (const Entry& entry : entries) width = std::max(width, terminal::columnsOf(keyOf(entry)));
  std::ostringstream text;
  for (const Entry& entry : entries) {
    const std::string_view fact = !entry.fact                       ? say("inconclusa", "cut short")
                                  : *entry.fact == Fact::Printed    ? say("impresa", "printed")
                                  : *entry.fact == Fact::NotPrinted ? say("no impresa", "not printed")
                                                                    : say("no se sabe", "unknown");
    text << timeText(entry.at, "%F %H:%M") << "  " << std::left << std::setw(12) << fact << std::setw(9)
         << (entry.number ? numberText(entry.number) : "-") << std::right << std::setw(14)
         << centsText(entry.total) << "  " << terminal::padded(keyOf(entry), width) << "  "
         << harmless(entry.device) << '\n';
  }
  return text.str();
}

}  // namespace zentaro::tools
