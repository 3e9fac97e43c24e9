// Status requests, closings and fiscal memory reports.
#include <algorithm>

#include "virtual-printer/device/commands.h"
#include "virtual-printer/device/status.h"
#include "virtual-printer/fiscal/calendar.h"
#include "virtual-printer/paper/report.h"

namespace virtual_printer {
namespace {

// The nineteen figures of a day: sales, then discounts, returns and the last invoice, amounts as 1234.56.
Fields closingFigures(const ZRecord& day) {
  const DayTotals& totals = day.totals;
  const auto& [bases, taxes, igtfBase, igtf] = totals.sales;
  const Figures& returns = totals.returns;
  Fields fields;
  for (const Cents amount : {bases[0], bases[1], taxes[1], totals.discounts, totals.discountTax,
                             returns.bases[0], returns.bases[1]})
    fields.push_back(plainDecimal(amount));
  fields.push_back(written(day.closedAt, "%y%m%d"));
  for (const Cents amount : {bases[2], taxes[2], bases[3], taxes[3], returns.taxes[1], returns.bases[2],
                             returns.taxes[2], returns.bases[3], returns.taxes[3]})
    fields.push_back(plainDecimal(amount));
  fields.push_back(written(day.lastInvoice.closedAt, "%M%H%d%m%y"));
  fields.push_back(std::to_string(day.lastInvoice.number));
  return fields;
}

void printClosing(Works& works, const std::string& title, const ZRecord& day) {
  works.finishTicket(dayReportLines(works.identity.owner, title, day), title);
}

Fields closingX(Works& works, const std::string& option) {
  refuseIf(option != "P" && option != "S" && !option.empty(), Refusal::BadField);
  const ZRecord day{works.books.counters.z, works.now, works.books.day, works.books.lastInvoice};
  if (option != "S") {
    requirePaper(works.conditions);
    printClosing(works, "REPORTE X", day);
  }
  return closingFigures(day);
}

Fields closingZ(Works& works, const std::string& option) {
  refuseIf(option != "T" && !option.empty(), Refusal::BadField);
  requirePaper(works.conditions);
  refuseIf(works.conditions.memoryFull, Refusal::MemoryFull);
  refuseIf(works.books.counters.z >= largestNumber, Refusal::CounterAtLimit);
  const ZRecord& record = works.books.closeDay(works.now);
  works.conditions.closingRequired = false;
  printClosing(works, "REPORTE Z " + eightDigits(record.number), record);
  return closingFigures(record);
}

struct MemoryRange {
  std::string text;
  std::vector<ZRecord> records;
};

template <class Key, class KeyOf>
std::vector<ZRecord> recordsBetween(std::span<const ZRecord> all, Key first, Key last, KeyOf keyOf) {
  refuseIf(first > last, Refusal::BadRange);
  std::vector<ZRecord> found;
  std::copy_if(all.begin(), all.end(), std::back_inserter(found),
               [&](const ZRecord& record) { return keyOf(record) >= first && keyOf(record) <= last; });
  return found;
}

// Six digits are a date, more are the number of a Z closing.
MemoryRange readRange(const Works& works, const Arguments& arguments) {
  const std::span<const ZRecord> all = works.books.zRecords;
  if (arguments.raw(0).size() == 6) {
    const auto first = arguments.date(0);
    const auto last = arguments.date(1);
    return {"DEL " + paperDate(first) + " AL " + paperDate(last),
            recordsBetween(all, first, last, [](const ZRecord& record) {
              return std::chrono::floor<std::chrono::days>(record.closedAt);
            })};
  }
  const std::int64_t first = arguments.number(0);
  const std::int64_t last = arguments.number(1);
  refuseIf(arguments.raw(0).size() < 8 || arguments.raw(1).size() < 8, Refusal::BadField);
  return {
      "DE Z " + std::to_string(first) + " A Z " + std::to_string(last),
      recordsBetween(all, first, last, [](const ZRecord& record) { return std::int64_t{record.number}; })};
}

}  // namespace

Fields status(Works& works, const Arguments& arguments) {
  return arguments.raw(0) == "*" ? counterStatus(works) : normalStatus(works);
}

Fields closing(Works& works, const Arguments& arguments) {
  works.machine.requireIdle();
  if (arguments.raw(0) == "X") return closingX(works, arguments.raw(1));
  refuseIf(arguments.raw(0) != "Z", Refusal::BadField);
  return closingZ(works, arguments.raw(1));
}

Fields memoryReport(Works& works, const Arguments& arguments) {
  works.machine.requireIdle();
  const auto [range, records] = readRange(works, arguments);
  const MemoryDetail detail = arguments.raw(2) == "R" ? MemoryDetail::TotalsOnly : MemoryDetail::EveryClosing;
  works.finishTicket(memoryReportLines(works.identity.owner, range, records, detail), "MEMORIA FISCAL");
  return {std::to_string(records.size()), std::to_string(records.empty() ? 0 : records.front().number),
          std::to_string(records.empty() ? 0 : records.back().number)};
}

}  // namespace virtual_printer
