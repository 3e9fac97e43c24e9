// Values and their conversions: numbers, amounts, dates and texts, there and back.
#include "tools/host/values.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cmath>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "automation/masks.h"
#include "automation/numbers.h"
#include "base/files/json.h"
#include "check.h"
#include "tools/show/iso_date.h"
#include "util/general.h"
#include "util/lm_string_lib.h"

namespace {

using namespace zentaro;
using fuzz::require;

/// What the conversion gives, or nothing when it raises an error of the platform; anything else that is
/// thrown ends the program.
template <class Conversion>
auto converted(Conversion conversion) -> std::optional<decltype(conversion())> {
  try {
    return conversion();
  } catch (const AutomationError&) {
    return std::nullopt;
  }
}

void checkNumber(double number) {
  if (!std::isfinite(number)) return;
  const std::u16string text = toText(number);
  const auto back = converted([&] { return toDouble(text); });
  // The largest numbers round up to an infinity at fifteen digits.
  require(back.has_value() || std::abs(number) > 1.7976931348623e308, "the text of a number is a number");
  if (!back) return;
  require(std::abs(*back - number) <= std::abs(number) * 1e-14 + 5e-324, "which is the same to 15 digits");
  require(toText(*back) == text, "and has the same text");
  const auto whole = converted([&] { return toInt32(number); });
  require(!whole || std::abs(*whole - number) <= 0.5, "a whole number is the nearest one");
  const auto amount = converted([&] { return toCurrency(number); });
  require(!amount || std::abs(amount->toDouble() - number) <= 0.00006 + std::abs(number) * 1e-15,
          "an amount is the nearest one");
}

void checkCurrency(Currency amount) {
  require(currencyFromText4(currencyText4(amount)) == amount, "an amount with four decimals is exact");
  require(toCurrency(toText(amount)) == amount, "the text of an amount is the amount");
}

void checkDate(Date date) {
  if (!isDateInRange(date)) return;
  const CalendarTime parts = calendarTime(date);
  require(calendarTime(dateOf(parts)) == parts, "calendar and day count are one");
  const auto iso = tools::dateFromIso(isoText(date));
  require(iso && calendarTime(*iso) == parts, "the ISO text of a date is the date");
  require(maskDate(date).size() == 6 && maskTime(date).size() == 6, "dates for the printer have six digits");
  const auto again = converted([&] { return toDate(toText(date)); });
  require(again && calendarTime(*again) == parts, "the text of a date is the date");
}

void checkText(const std::u16string& text) {
  require(utf16(utf8(utf16(utf8(text)))) == utf16(utf8(text)), "texts survive UTF-8");
  const Variant value(text);
  const auto number = converted([&] { return toDouble(value); });
  const auto whole = converted([&] { return toInt32(value); });
  require(!whole || (number && std::abs(*number - *whole) <= 0.5), "a whole number is a number");
  converted([&] { return toInt16(value); });
  converted([&] { return toBoolean(value); });
  const auto amount = converted([&] { return toCurrency(value); });
  require(!amount || (number && std::abs(amount->toDouble() - *number) <= 0.0001 + std::abs(*number) * 1e-14),
          "an amount is a number");
  const auto date = textToDate(text);
  require(!date || isDateInRange(*date), "a date in a text lies in the calendar");
  leadingNumber(text);
  leadingHex(text);
  converted([&] { return leadingSignedHex(text); });
  converted([&] { return maskAmount(value); });
  converted([&] { return maskWholeNumber8(value); });
  require(lmStringLib::FixLen(text, 20).size() == 20, "a text of fixed length has it");
  const std::u16string half = text.substr(0, text.size() / 2);
  converted([&] { return General::MakeDateTimeWithSeconds(half, text); });
}

bool isSame(const Variant& a, const Variant& b) {
  if (a.kind() != b.kind()) return false;
  switch (a.kind()) {
    case Variant::Kind::Double:
      return a.number() == b.number() || (std::isnan(a.number()) && std::isnan(b.number()));
    case Variant::Kind::Date: return calendarTime(a.date()) == calendarTime(b.date());
    case Variant::Kind::Array: return std::ranges::equal(a.array().items(), b.array().items(), isSame);
    case Variant::Kind::Boolean: return a.boolean() == b.boolean();
    case Variant::Kind::Int32: return a.int32() == b.int32();
    case Variant::Kind::Currency: return a.currency() == b.currency();
    case Variant::Kind::Text: return a.text() == b.text();
    default: return true;
  }
}

Variant anyValue(FuzzedDataProvider& input, int depth = 0) {
  switch (input.ConsumeIntegralInRange(0, depth > 3 ? 8 : 9)) {
    case 0: return {};
    case 1: return Variant::null();
    case 2: return Variant::missing();
    case 3: return input.ConsumeBool();
    case 4: return input.ConsumeIntegral<std::int32_t>();
    case 5: return Currency::fromScaled(input.ConsumeIntegral<std::int64_t>());
    case 6: return Date{input.ConsumeFloatingPointInRange(-657434.0, 2958465.0)};
    case 7: return utf16(input.ConsumeRandomLengthString(20));
    case 8: return input.ConsumeFloatingPoint<double>();
    default:
      std::vector<Variant> items;
      for (int count = input.ConsumeIntegralInRange(0, 5); count > 0; --count)
        items.push_back(anyValue(input, depth + 1));
      return Array(std::move(items));
  }
}

void checkJson(const Variant& value) {
  tools::ObjectTable objects;
  const auto line = converted([&] { return jsonLine(tools::jsonOf(value, objects)); });
  if (!line) return;
  require(isSame(tools::variantOf(Json::parse(*line), objects), value), "a value survives JSON");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  checkNumber(input.ConsumeFloatingPoint<double>());
  checkNumber(static_cast<double>(input.ConsumeIntegral<std::int32_t>()) / 100);
  checkCurrency(Currency::fromScaled(input.ConsumeIntegral<std::int64_t>()));
  checkDate(Date{input.ConsumeFloatingPointInRange(-700000.0, 3000000.0)});
  checkJson(anyValue(input));
  checkText(utf16(input.ConsumeRemainingBytesAsString()));
  return 0;
}
