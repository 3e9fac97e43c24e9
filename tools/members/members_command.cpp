// Lists of members, for people and as JSON.
#include "members/members_command.h"

#include <iostream>
#include <memory>
#include <stdexcept>
#include <utility>

#include "common/guarded.h"
#include "common/json.h"
#include "common/signatures.h"
#include "interface/description_json.h"
#include "interface/library.h"
#include "interface/sent_text.h"
#include "interface/type_names.h"
#include "members/reference.h"
#include "text/ascii.h"

namespace zentaro::tools {

namespace {

struct Options {
  std::string name;
  bool isJson = false, isMarkdown = false;
};

void showClass(const ClassDescription& description) {
  std::cout << qualifiedName(description) << ": " << description.help
            << (description.create == nullptr ? " Handed out by the printer object." : "") << "\n\n";
  for (const auto& group : memberGroups(description)) {
    std::cout << "  " << signature(group) << "\n      " << group.front().help << '\n';
  }
  std::cout << '\n';
}

void showEnumeration(const EnumerationDescription& enumeration) {
  std::cout << enumeration.name << "\n\n";
  for (const auto& [name, value] : enumeration.values) std::cout << "  " << name << " = " << value << '\n';
  std::cout << '\n';
}

void showMember(const ClassDescription& description, std::span<const Member> group) {
  const Member& member = group.front();
  std::cout << description.name << "." << signature(group) << "\n\n  " << member.help << '\n';
  for (const Parameter& parameter : member.parameters) {
    std::cout << "  " << parameter.name << ": " << meaning(member, parameter) << '\n';
  }
  if (member.effect.sends()) std::cout << "  Sends " << sentText(member.effect) << '\n';
  if (const std::string outcomes = outcomesText(member); !outcomes.empty()) {
    std::cout << "  Outcome, " << outcomes << '\n';
  }
  std::cout << '\n';
}

// The class with these of its members.
Json membersJson(const ClassDescription& description, std::span<const Member> members) {
  Json json = Json::parse(classJson(description));
  const Json all = std::exchange(json["members"], Json::array());
  for (const Member& member : members) {
    json["members"].push_back(all[static_cast<std::size_t>(&member - description.members.data())]);
    json["members"].back()["outcomes"] = outcomesText(member);
  }
  return json;
}

// The class of that name, or each class with a member of that name, or all of them for an empty name.
template <class Show>
bool forEachMatch(const std::string& name, const Show& show) {
  bool found = false;
  for (const ClassDescription* description : libraryClasses()) {
    const bool isWhole = name.empty() || findClass(name) == description;
    const auto members = isWhole ? description->members : findMember(*description, name);
    if (!members.empty()) show(*description, members, isWhole);
    found = found || !members.empty();
  }
  return found;
}

bool showEnumerations(const std::string& name) {
  bool found = false;
  for (const EnumerationDescription& enumeration : libraryEnumerations()) {
    if (!name.empty() && !equalIgnoringCase(enumeration.name, name)) continue;
    showEnumeration(enumeration);
    found = true;
  }
  return found;
}

int run(const Options& options) {
  if (options.isMarkdown) {
    std::cout << referencePage();
    return exitDone;
  }
  Json all = Json::array();
  bool found = forEachMatch(options.name, [&](const auto& description, auto members, bool isWhole) {
    if (options.isJson) {
      all.push_back(membersJson(description, members));
    } else if (isWhole) {
      showClass(description);
    } else {
      showMember(description, members);
    }
  });
  if (options.isJson) std::cout << jsonPage(all);
  if (!options.isJson) found = showEnumerations(options.name) || found;
  if (found) return exitDone;
  throw std::runtime_error("no class, member or enumeration \"" + options.name +
                           "\": \"zentaro members\" lists all");
}

}  // namespace

void addMembersCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<Options>();
  CLI::App* command = app.add_subcommand("members", "List the classes and members, or explain one");
  command->add_option("NAME", options->name, "A class, member or enumeration, in any case")->type_name("");
  CLI::Option* json =
      command->add_flag("--json", options->isJson, "As JSON, with parameters, defaults and outcomes");
  command->add_flag("--markdown", options->isMarkdown, "The whole reference manual")->excludes(json);
  command->callback([options, &status] { status = guarded([&] { return run(*options); }); });
}

}  // namespace zentaro::tools
