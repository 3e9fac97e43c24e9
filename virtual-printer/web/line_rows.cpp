// Rows as JSON. The page is given what it shows; it decodes nothing.
#include "virtual-printer/web/line_rows.h"

#include <nlohmann/json.hpp>

#include "virtual-printer/device/status.h"
#include "virtual-printer/fiscal/calendar.h"
#include "virtual-printer/wire/codepage.h"

namespace virtual_printer {
namespace {

using Json = nlohmann::ordered_json;

// An answer may leave long after its command, but not this many commands later.
constexpr std::size_t exchangesInMind = 64;
constexpr std::size_t bytesShown = 8192;

void addFields(Json& json, const Event& event) {
  json["fields"] = Json::array();
  for (const std::string& field : event.fields) json["fields"].push_back(utf8FromWire(field));
}

void addStatus(Json& json, const Event& answer) {
  json["printerStatus"] = hexadecimal(answer.printerStatus, 4);
  json["fiscalStatus"] = hexadecimal(answer.fiscalStatus, 4);
  json["outcome"] = (answer.fiscalStatus & fiscal_bit::refused) != 0 ? "refused" : "ok";
}

}  // namespace

void LineRows::happened(const Moment& moment, const Event& event) {
  if (event.kind == EventKind::Unsaved) return;  // the refusal says it
  const bool isOfExchange =
      event.kind == EventKind::Command || event.kind == EventKind::Fault || event.kind == EventKind::Answer;
  if (!isOfExchange) {
    Row row{0, moment, event, event.bytes};
    list(row, moment);
    const bool isPower = event.kind == EventKind::Power;
    return show(row, isPower ? "power" : event.kind == EventKind::Reset ? "reset" : "noise", nullptr);
  }
  Exchange& exchange = exchanges_[event.exchange];
  switch (event.kind) {
    case EventKind::Fault: exchange.faults.push_back(event.name); break;
    case EventKind::Answer:
      exchange.answer.event = event;
      exchange.hasAnswer = true;
      break;
    default: exchange.command = {0, moment, event, event.bytes}; list(exchange.command, moment);
  }
  show(exchange.command, "command", &exchange);
  if (exchanges_.size() > exchangesInMind) exchanges_.erase(exchanges_.begin());
}

void LineRows::sent(const Moment& moment, const Output& output) {
  const auto found = exchanges_.find(output.exchange);
  if (found == exchanges_.end()) return;
  Row& answer = found->second.answer;
  if (answer.number == 0) list(answer, moment);
  answer.moment = moment;  // the answer is there when its last byte is
  answer.bytes += output.bytes;
  show(answer, "answer", &found->second);
}

void LineRows::list(Row& row, const Moment& moment) {
  row.number = ++lastRow_;
  row.moment = moment;
}

void LineRows::show(const Row& row, const char* way, const Exchange* exchange) {
  Json json{{"row", row.number},
            {"way", way},
            {"date", written(row.moment.local, "%d-%m-%Y")},
            {"time", written(row.moment.local, "%H:%M:%S")},
            {"ms", row.moment.steady.count()},
            {"name", row.event.name},
            {"bytes", hexBytes(row.bytes.substr(0, bytesShown))},
            {"size", row.bytes.size()}};
  if (exchange != nullptr) {
    json["exchange"] = row.event.exchange;
    json["code"] = hexadecimal(row.event.code, 2);
    json["sequence"] = row.event.sequence;
    json["faults"] = exchange->faults;
    addFields(json, row.event);
    if (exchange->hasAnswer) addStatus(json, exchange->answer.event);
  }
  feed_.publish("row", row.number, json.dump(-1, ' ', false, Json::error_handler_t::replace));
}

}  // namespace virtual_printer
