// Values and answers as text and JSON.
#include "tools/show/show.h"

#include "automation/conversions.h"
#include "base/files/json.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "util/lm_hex_str.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;

namespace {

std::string hex(std::int32_t value, std::int16_t digits) {
  return "0x" + utf8(lmHexStr::HexStr(value, digits));
}

// What a record holds: its properties, and the methods that only compute a value from them.
bool isValue(const Member& member) {
  const bool isComputed = member.access == Access::Call && member.parameters.size() == 0;
  return member.access == Access::Get || (isComputed && member.result.kind != ValueType::None);
}

Variant memberValue(const Object& record, const Member& member) {
  return member.thunk(record.instance(), {});
}

std::string recordText(const Object& record) {
  std::string text;
  forEachValue(record, [&](const Member& member, const Variant& value) {
    text += (text.empty() ? "" : ", ") + std::string(member.name) + " " + valueText(value);
  });
  return text.empty() ? say("(nada)", "(nothing)") : text;
}

Json recordJson(const Object& record) {
  Json json;
  forEachValue(record, [&](const Member& member, const Variant& value) {
    json[std::string(member.name)] = valueJson(value);
  });
  return json;
}

std::string arrayText(const Array& array) {
  std::string text;
  for (int index = 0; array.hasBounds() && index <= array.upperBound(); ++index) {
    text += (text.empty() ? "" : ", ") + valueText(array.at(index));
  }
  return "[" + text + "]";
}

Json arrayJson(const Array& array) {
  Json json = Json::array();
  for (int index = 0; array.hasBounds() && index <= array.upperBound(); ++index) {
    json.push_back(valueJson(array.at(index)));
  }
  return json;
}

}  // namespace

void forEachValue(const Object& record, const std::function<void(const Member&, const Variant&)>& add) {
  if (record.isNothing()) return;
  for (const Member& member : record.description().members) {
    if (isValue(member)) add(member, memberValue(record, member));
  }
}

std::string valueText(const Variant& value) {
  switch (value.kind()) {
    case Variant::Kind::Empty: return say("(vacío)", "(empty)");
    case Variant::Kind::Null: return say("(nulo)", "(null)");
    case Variant::Kind::Missing: return say("(omitido)", "(omitted)");
    case Variant::Kind::Currency: return currencyText4(value.currency());
    case Variant::Kind::Date: return isoText(value.date());
    case Variant::Kind::Array: return arrayText(value.array());
    case Variant::Kind::Object: return recordText(value.object());
    default: return harmless(utf8(toText(value)));
  }
}

Json valueJson(const Variant& value) {
  switch (value.kind()) {
    case Variant::Kind::Empty:
    case Variant::Kind::Null:
    case Variant::Kind::Missing: return nullptr;
    case Variant::Kind::Boolean: return value.boolean();
    case Variant::Kind::Int16: return value.int16();
    case Variant::Kind::Int32: return value.int32();
    case Variant::Kind::Double: return value.number();
    case Variant::Kind::Text: return utf8(value.text());
    case Variant::Kind::Array: return arrayJson(value.array());
    case Variant::Kind::Object: return recordJson(value.object());
    default: return valueText(value);
  }
}

std::string outcomeLine(ENVERR_CODES outcome) {
  return std::to_string(static_cast<int>(outcome)) + " " + utf8(outcomeText(outcome));
}

std::string hexWord(std::int32_t word) { return hex(word, 4); }

std::string answerText(const CZentaro& printer) {
  std::string text =
      say("Impresora       {}\nFiscal          {}\n", "Printer status  {}\nFiscal status   {}\n",
          {hexWord(printer.dwordPrinterStatus), hexWord(printer.dwordStatusFiscal)});
  if (!printer.sLastError.empty())
    text += say("Dice            {}\n", "Printer says    {}\n", {harmless(utf8(printer.sLastError))});
  const Variant fields = printer.getResponse(0);
  if (!fields.is(Variant::Kind::Array)) return text;
  const int last = fields.array().upperBound();
  for (int index = 0; index <= last; ++index) {
    const std::string number = std::to_string(index), value = valueText(fields.array().at(index));
    const bool isChecksum = index == last && index > 2;  // behind the code and the two status words
    text += isChecksum ? say("Suma            {}\n", "Checksum        {}\n", {value})
                       : say("Campo {}{}{}\n", "Field {}{}{}\n",
                             {number, std::string(10 - number.size(), ' '), value});
  }
  return text;
}

Json answerJson(const CZentaro& printer) {
  const Variant fields = printer.getResponse(0);
  return {{"printerStatus", hexWord(printer.dwordPrinterStatus)},
          {"fiscalStatus", hexWord(printer.dwordStatusFiscal)},
          {"error", utf8(printer.sLastError)},
          {"command", hex(printer.nLastCommand, 2)},
          {"fields", fields.is(Variant::Kind::Array) ? valueJson(fields) : Json::array()}};
}

}  // namespace zentaro::tools
