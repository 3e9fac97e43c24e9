// Signatures and outcomes of members.
#include "tools/show/signatures.h"

#include <algorithm>

#include "interface/type_names.h"
#include "text/ascii.h"

namespace zentaro::tools {

namespace {

std::string defaultText(const Default& fallback) {
  switch (fallback.kind) {
    case Default::Kind::None:
    case Default::Kind::Missing: return {};
    case Default::Kind::Zero: return " = 0";
    case Default::Kind::EmptyText:
    case Default::Kind::Text: return " = \"" + std::string(fallback.text) + "\"";
    case Default::Kind::True: return " = True";
  }
  return {};
}

std::string parameterText(const Parameter& parameter) {
  const std::string text =
      std::string(parameter.name) + ": " + typeName(parameter.type) + defaultText(parameter.fallback);
  return parameter.isOptional() ? "[" + text + "]" : text;
}

// "get", "let value", "let bIsOpen by reference"
std::string accessorText(const Member& accessor, Wording wording) {
  std::string text = accessName(accessor.access);
  if (!accessor.newValue.name.empty()) text += " " + std::string(accessor.newValue.name);
  if (!accessor.newValue.name.empty() && accessor.newValue.passing == Passing::ByReference)
    text += wording(" by reference");
  return text;
}

std::string joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) text += (text.empty() ? "" : ", ") + part;
  return text;
}

}  // namespace

std::vector<std::span<const Member>> memberGroups(const ClassDescription& description) {
  std::vector<std::span<const Member>> groups;
  for (auto rest = description.members; !rest.empty(); rest = rest.subspan(groups.back().size())) {
    groups.push_back(findMember(description, rest.front().name));
  }
  return groups;
}

std::span<const Member> findMember(const ClassDescription& description, std::string_view name) {
  const auto hasName = [name](const Member& member) { return equalIgnoringCase(member.name, name); };
  const auto first = std::ranges::find_if(description.members, hasName);
  return {first, std::find_if_not(first, description.members.end(), hasName)};
}

std::string signature(std::span<const Member> group, Wording wording) {
  const Member& member = group.front();
  const std::string name(member.name), result = typeName(member.result);
  std::vector<std::string> parts;
  if (member.access == Access::Call) {
    for (const Parameter& parameter : member.parameters) parts.push_back(parameterText(parameter));
    return name + "(" + joined(parts) + ")" + (result.empty() ? "" : ": " + result);
  }
  for (const Member& accessor : group) parts.push_back(accessorText(accessor, wording));
  return name + ": " + result + " (" + joined(parts) + ")";
}

std::string outcomesText(const Member& member, Wording wording) {
  const unsigned outcomes = member.outcomes;
  std::vector<std::string> codes;
  if ((outcomes & checksPort) != 0 && member.returnsOutcome()) codes.emplace_back("-1");
  if ((outcomes & exchanges) != 0) codes.push_back(wording("0 to 5"));
  if ((outcomes & checksArgument) != 0) codes.emplace_back("6");
  if (codes.empty()) return {};
  if (member.returnsOutcome()) return wording("the result: ") + joined(codes);
  std::string text = wording("in nEnvironmentError: ") + joined(codes);
  if ((outcomes & checksPort) != 0) text += wording("; unchanged while the port is closed");
  return text;
}

}  // namespace zentaro::tools
