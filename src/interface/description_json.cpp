// Written as text, member by member: the library has no JSON of its own.
#include "interface/description_json.h"

#include "interface/library.h"
#include "interface/type_names.h"

namespace zentaro {

namespace {

/// The texts of descriptions are UTF-8 without control characters.
std::string quoted(std::string_view text) {
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') json += '\\';
    json += c;
  }
  return json + "\"";
}

std::string flag(bool value) { return value ? "true" : "false"; }

/// `"name":value`, and all of them as an object or a list of values as an array.
std::string pair(std::string_view name, const std::string& value) { return quoted(name) + ":" + value; }

template <class Items, class Each>
std::string joined(char begin, const Items& items, const Each& each, char end) {
  std::string json(1, begin);
  for (const auto& item : items) {
    const std::string text = each(item);
    if (json.size() > 1 && !text.empty()) json += ',';
    json += text;
  }
  return json + end;
}
/// A pair that is empty is none.
std::string object(std::initializer_list<std::string> pairs) {
  return joined(
      '{', pairs, [](const std::string& text) { return text; }, '}');
}

std::string defaultJson(const Default& fallback) {
  switch (fallback.kind) {
    case Default::Kind::None: return "null";
    case Default::Kind::Missing: return object({pair("type", quoted("missing"))});
    case Default::Kind::Zero: return "0";
    case Default::Kind::EmptyText:
    case Default::Kind::Text: return quoted(fallback.text);
    case Default::Kind::True: return "true";
  }
  return "null";
}

/// Of a parameter, or of the new value of an assignment.
std::string parameterJson(const Parameter& parameter) {
  const std::string passing = parameter.passing == Passing::ByReference ? "byref" : "byval";
  return object({pair("name", quoted(parameter.name)), pair("type", quoted(typeName(parameter.type))),
                 pair("passing", quoted(passing)), pair("note", quoted(parameter.note)),
                 pair("optional", flag(parameter.isOptional())),
                 parameter.isOptional() ? pair("default", defaultJson(parameter.fallback)) : ""});
}

std::string memberJson(const Member& member) {
  const std::string result = typeName(member.result);
  const auto code = [](int outcome) { return std::to_string(outcome); };
  return object({pair("name", quoted(member.name)), pair("kind", quoted(accessName(member.access))),
                 pair("parameters", joined('[', member.parameters, parameterJson, ']')),
                 pair("result", result.empty() ? "null" : quoted(result)),
                 pair("outcome", flag(member.returnsOutcome())),
                 pair("outcomes", joined('[', member.outcomeCodes(), code, ']')),
                 pair("help", quoted(member.help)),
                 member.newValue.name.empty() ? "" : pair("newValue", parameterJson(member.newValue))});
}

std::string enumerationJson(const EnumerationDescription& enumeration) {
  const auto value = [](const EnumerationValue& each) { return pair(each.name, std::to_string(each.value)); };
  return object(
      {pair("name", quoted(enumeration.name)), pair("values", joined('{', enumeration.values, value, '}'))});
}

}  // namespace

std::string classJson(const ClassDescription& description, std::span<const Member> members) {
  return object({pair("class", quoted(qualifiedName(description))),
                 pair("interface", quoted(description.interfaceName)),
                 pair("creatable", flag(description.create != nullptr)),
                 pair("help", quoted(description.help)),
                 pair("members", joined('[', members, memberJson, ']'))});
}

std::string libraryJson() {
  const auto each = [](const ClassDescription* description) {
    return classJson(*description, description->members);
  };
  return object({pair("library", quoted(libraryName)),
                 pair("classes", joined('[', libraryClasses(), each, ']')),
                 pair("enumerations", joined('[', libraryEnumerations(), enumerationJson, ']'))});
}

}  // namespace zentaro
