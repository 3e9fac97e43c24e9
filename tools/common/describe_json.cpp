// Class descriptions as JSON.
#include "common/describe_json.h"

#include "common/type_names.h"

namespace zentaro::tools {

namespace {

Json defaultValue(const Default& fallback) {
  switch (fallback.kind) {
    case Default::Kind::None:
      return nullptr;
    case Default::Kind::Missing:
      return {{"type", "missing"}};
    case Default::Kind::Zero:
      return 0;
    case Default::Kind::EmptyText:
    case Default::Kind::Text:
      return fallback.text;
    case Default::Kind::True:
      return true;
  }
  return nullptr;
}

Json describeParameter(const Parameter& parameter) {
  Json json{{"name", parameter.name},
            {"type", typeName(parameter.type)},
            {"passing", parameter.passing == Passing::ByReference ? "byref" : "byval"},
            {"optional", parameter.isOptional()}};
  if (parameter.isOptional()) json["default"] = defaultValue(parameter.fallback);
  return json;
}

}  // namespace

Json describeMember(const Member& member) {
  Json parameters = Json::array();
  for (const Parameter& parameter : member.parameters) parameters.push_back(describeParameter(parameter));
  const std::string result = typeName(member.result);
  Json json{{"name", member.name},
            {"kind", accessName(member.access)},
            {"parameters", std::move(parameters)},
            {"result", result.empty() ? Json(nullptr) : Json(result)},
            {"help", member.help}};
  if (!member.newValue.name.empty()) json["newValue"] = describeParameter(member.newValue);
  return json;
}

Json describeClass(const ClassDescription& description) {
  Json members = Json::array();
  for (const Member& member : description.members) members.push_back(describeMember(member));
  return {{"class", qualifiedName(description)},
          {"interface", description.interfaceName},
          {"creatable", description.create != nullptr},
          {"help", description.help},
          {"members", std::move(members)}};
}

}  // namespace zentaro::tools
