// Entries as lines of JSON.
#include "till/books/entry.h"

#include <array>

#include "base/files/json.h"

namespace zentaro::tools {

namespace {

constexpr std::array<std::pair<Fact, std::string_view>, 3> factNames{
    {{Fact::Printed, "printed"}, {Fact::NotPrinted, "not-printed"}, {Fact::Unknown, "unknown"}}};

Json factJson(const std::optional<Fact>& fact) {
  for (const auto& [known, name] : factNames)
    if (fact == known) return name;
  return nullptr;
}

template <class T>
Json orNull(const std::optional<T>& value) {
  return value ? Json(*value) : Json(nullptr);
}

template <class T>
std::optional<T> optionalAt(const Json& json, const char* name) {
  return json.at(name).is_null() ? std::nullopt : std::optional(json.at(name).get<T>());
}

std::optional<Fact> factAt(const Json& json) {
  const auto name = optionalAt<std::string>(json, "fact");
  if (!name) return std::nullopt;
  for (const auto& [known, knownName] : factNames)
    if (*name == knownName) return known;
  return Fact::Unknown;
}

}  // namespace

Json toJson(const Entry& entry) {
  return {{"name", entry.name},
          {"at", entry.at},
          {"process", entry.process},
          {"id", entry.key},
          {"content", entry.digest},
          {"device", entry.device},
          {"machine", entry.machine},
          {"creditNote", entry.isCreditNote},
          {"net", entry.net},
          {"total", entry.total},
          {"numberBefore", entry.before.lastNumber},
          {"dayBefore", orNull(entry.before.dayNet)},
          {"lastZ", orNull(entry.lastZ)},
          {"turn", entry.turn},
          {"number", orNull(entry.number)},
          {"fact", factJson(entry.fact)},
          {"told", entry.isTold}};
}

std::optional<Entry> entryFrom(const std::string& line) {
  try {
    const Json json = Json::parse(line);
    Entry entry;
    entry.name = json.at("name").get<std::string>();
    entry.at = json.at("at").get<std::int64_t>();
    entry.process = json.at("process").get<std::string>();
    entry.key = json.at("id").get<std::string>();
    entry.digest = json.at("content").get<std::string>();
    entry.device = json.at("device").get<std::string>();
    entry.machine = json.at("machine").get<std::string>();
    entry.isCreditNote = json.at("creditNote").get<bool>();
    entry.net = json.at("net").get<Cents>();
    entry.total = json.at("total").get<Cents>();
    entry.before = {0, json.at("numberBefore").get<int>(), optionalAt<Cents>(json, "dayBefore")};
    entry.lastZ = optionalAt<int>(json, "lastZ");
    entry.turn = json.at("turn").get<std::string>();
    entry.number = optionalAt<int>(json, "number");
    entry.fact = factAt(json);
    entry.isTold = json.at("told").get<bool>();
    return entry;
  } catch (const Json::exception&) {
    return std::nullopt;
  }
}

}  // namespace zentaro::tools
