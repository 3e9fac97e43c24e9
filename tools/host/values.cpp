// Values as JSON and back.
#include "tools/host/values.h"

#include <array>
#include <cmath>
#include <limits>

#include "automation/automation_error.h"
#include "automation/description.h"
#include "base/files/json.h"
#include "interface/type_names.h"
#include "tools/host/rpc_error.h"
#include "tools/show/iso_date.h"
#include "tools/show/show.h"

namespace zentaro::tools {

namespace {

constexpr int deepestNesting = 64;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr std::array<std::pair<std::string_view, double>, 3> namedNumbers{
    {{"NaN", std::numeric_limits<double>::quiet_NaN()}, {"Infinity", infinity}, {"-Infinity", -infinity}}};

Json typed(std::string_view type, std::string_view value) { return {{"type", type}, {"value", value}}; }

Json numberJson(double value) {
  if (std::isfinite(value)) return value;
  if (std::isnan(value)) return typed("double", "NaN");
  return typed("double", value > 0 ? "Infinity" : "-Infinity");
}

Json objectJson(const Object& object, ObjectTable& objects) {
  if (object.isNothing()) return {{"type", "nothing"}};
  return {
      {"type", "object"}, {"class", qualifiedName(object.description())}, {"object", objects.idOf(object)}};
}

Json arrayJson(const Array& array, ObjectTable& objects) {
  Json json = Json::array();
  if (!array.hasBounds()) return json;
  for (const Variant& item : array.items()) json.push_back(jsonOf(item, objects));
  return json;
}

const std::string& textIn(const Json& json) {
  const auto value = json.find("value");
  if (value == json.end() || !value->is_string()) {
    throw invalidParameters("a value of this type needs \"value\", a text: " + jsonLine(json));
  }
  return value->get_ref<const std::string&>();
}

Variant currencyOf(const Json& json, const ObjectTable& /*objects*/) {
  try {
    return currencyFromText4(textIn(json));
  } catch (const AutomationError&) {
    throw invalidParameters("no currency amount with at most four decimals: " + jsonLine(json));
  }
}

Variant dateValue(const Json& json, const ObjectTable& /*objects*/) {
  if (const auto date = dateFromIso(textIn(json))) return *date;
  throw invalidParameters("no date-time like \"2024-03-15T14:05:00\": " + jsonLine(json));
}

Variant doubleOf(const Json& json, const ObjectTable& /*objects*/) {
  for (const auto& [name, value] : namedNumbers) {
    if (textIn(json) == name) return value;
  }
  throw invalidParameters("a double is a number, \"NaN\", \"Infinity\" or \"-Infinity\": " + jsonLine(json));
}

Variant objectOf(const Json& json, const ObjectTable& objects) {
  const auto id = json.find("object");
  const bool fits =
      id != json.end() && id->is_number_integer() && *id >= 0 && *id <= std::numeric_limits<int>::max();
  const Object* object = fits ? objects.find(id->get<int>()) : nullptr;
  if (object == nullptr) throw invalidParameters("no such object, or it was released: " + jsonLine(json));
  return *object;
}

struct TypedForm {
  std::string_view type;
  Variant (*read)(const Json& json, const ObjectTable& objects);
};
constexpr std::array typedForms{
    TypedForm{"empty", [](const Json&, const ObjectTable&) { return Variant(); }},
    TypedForm{"missing", [](const Json&, const ObjectTable&) { return Variant::missing(); }},
    TypedForm{"nothing", [](const Json&, const ObjectTable&) { return Variant(Object()); }},
    TypedForm{"currency", currencyOf},
    TypedForm{"date", dateValue},
    TypedForm{"double", doubleOf},
    TypedForm{"object", objectOf}};

Variant typedValue(const Json& json, const ObjectTable& objects) {
  const auto type = json.find("type");
  for (const TypedForm& form : typedForms) {
    if (type != json.end() && *type == form.type) return form.read(json, objects);
  }
  throw invalidParameters(
      "a JSON object is a value only with \"type\": empty, missing, nothing, currency, date, double or "
      "object: " +
      jsonLine(json));
}

Variant value(const Json& json, const ObjectTable& objects, int depth);

Variant arrayOf(const Json& json, const ObjectTable& objects, int depth) {
  if (depth == deepestNesting) throw invalidParameters("arrays are nested too deeply");
  std::vector<Variant> items;
  for (const Json& item : json) items.push_back(value(item, objects, depth + 1));
  return Array(std::move(items));
}

Variant value(const Json& json, const ObjectTable& objects, int depth) {
  if (json.is_null()) return Variant::null();
  if (json.is_boolean()) return json.get<bool>();
  if (json.is_number_unsigned()) return json.get<std::uint64_t>();
  if (json.is_number_integer()) return json.get<std::int64_t>();
  if (json.is_number()) return json.get<double>();
  if (json.is_string()) return json.get<std::string>();
  return json.is_array() ? arrayOf(json, objects, depth) : typedValue(json, objects);
}

}  // namespace

Json jsonOf(const Variant& value, ObjectTable& objects) {
  switch (value.kind()) {
    case Variant::Kind::Empty: return {{"type", "empty"}};
    case Variant::Kind::Missing: return {{"type", "missing"}};
    case Variant::Kind::Double: return numberJson(value.number());
    case Variant::Kind::Currency: return typed("currency", currencyText4(value.currency()));
    case Variant::Kind::Date: return typed("date", isoText(value.date()));
    case Variant::Kind::Array: return arrayJson(value.array(), objects);
    case Variant::Kind::Object: return objectJson(value.object(), objects);
    default: return valueJson(value);  // JSON has a value of its own for it
  }
}

Variant variantOf(const Json& json, const ObjectTable& objects) { return value(json, objects, 0); }

}  // namespace zentaro::tools
