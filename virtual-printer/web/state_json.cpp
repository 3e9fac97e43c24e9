// The printer's inside as JSON.
#include "virtual-printer/web/state_json.h"

#include <nlohmann/json.hpp>

#include "virtual-printer/device/commands.h"
#include "virtual-printer/device/status.h"
#include "virtual-printer/faults/effect.h"

namespace virtual_printer {
namespace {

using Json = nlohmann::ordered_json;

Json documentJson(const Works& works) {
  const Document& document = works.machine.document();
  constexpr std::array phases{"none", "items", "paying", "partial"};
  Json json{{"status", documentStatus(works.machine)},
            {"phase", phases.at(static_cast<std::size_t>(works.machine.phase()))}};
  if (works.machine.phase() == Phase::None) return json;
  json["title"] = documentTitle(document.kind, document.number);
  json["name"] = document.buyer.name;
  json["rif"] = document.buyer.rif;
  json["items"] = document.itemCount;
  json["net"] = paperDecimal(document.net());
  json["tax"] = paperDecimal(document.tax());
  json["total"] = paperDecimal(document.due());
  json["paid"] = paperDecimal(document.paid);
  json["unpaid"] = paperDecimal(document.unpaid());
  json["change"] = paperDecimal(document.change());
  return json;
}

Json figuresJson(const Figures& figures, const RateTable& rates) {
  Json lines = Json::array({{{"label", "E"}, {"base", paperDecimal(figures.bases[0])}, {"tax", ""}}});
  for (std::size_t slot = 1; slot < slots; ++slot) {
    if (rates.rates[slot] == 0) continue;
    lines.push_back({{"label", rateLabel(rates, slot)},
                     {"base", paperDecimal(figures.bases[slot])},
                     {"tax", paperDecimal(figures.taxes[slot])}});
  }
  return {{"lines", lines},
          {"igtf", paperDecimal(figures.igtf)},
          {"total", paperDecimal(sum(figures.bases) + sum(figures.taxes))}};  // as on the paper of a Z
}

Json dayJson(const DayTotals& day) {
  return {{"sales", figuresJson(day.sales, day.rates)},
          {"returns", figuresJson(day.returns, day.rates)},
          {"discounts", paperDecimal(day.discounts)},
          {"invoices", day.invoices},
          {"creditNotes", day.creditNotes},
          {"nonFiscals", day.nonFiscals},
          {"cancelled", day.cancelled}};
}

Json memoryJson(const Books& books) {
  Json json{{"invoice", books.counters.invoice},
            {"creditNote", books.counters.creditNote},
            {"nonFiscal", books.counters.nonFiscal},
            {"z", books.counters.z},
            {"records", books.zRecords.size()}};
  if (books.zRecords.empty()) return json;
  const ZRecord& last = books.zRecords.back();
  json["closedAt"] = paperDate(last.closedAt) + " " + paperTime(last.closedAt);
  return json;
}

const char* valueName(ValueKind kind) {
  switch (kind) {
    case ValueKind::Seconds: return "seconds";
    case ValueKind::Bytes: return "bytes";
    case ValueKind::Place: return "place";
    case ValueKind::None: break;
  }
  return "none";
}

}  // namespace

std::string stateJson(const Works& works) {
  return Json{{"document", documentJson(works)},   {"day", dayJson(works.books.day)},
              {"memory", memoryJson(works.books)}, {"slip", works.slipOn},
              {"header", works.books.header},      {"footer", works.books.footer}}
      .dump();
}

std::string aboutJson(const Identity& identity) {
  Json effects = Json::array();
  for (const EffectEntry& entry : effectTable())
    effects.push_back({{"name", entry.name},
                       {"value", valueName(entry.value)},
                       {"standard", entry.standard},
                       {"isCondition", entry.isCondition}});
  Json commands = Json::array();
  for (const CommandEntry& entry : commandTable()) commands.push_back(entry.name);
  return Json{
      {"owner", identity.owner.name},         {"rif", identity.owner.rif}, {"serial", identity.owner.serial},
      {"igtf", paperRate(identity.igtfRate)}, {"effects", effects},        {"commands", commands}}
      .dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace virtual_printer
