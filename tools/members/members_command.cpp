// Lists of members, for people and as JSON.
#include "tools/members/members_command.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "interface/description_json.h"
#include "interface/library.h"
#include "interface/type_names.h"
#include "text/ascii.h"
#include "tools/show/guarded.h"
#include "tools/show/signatures.h"
#include "tools/show/wording.h"

namespace zentaro::tools {

using terminal::say;

namespace {

struct MembersOptions {
  std::string name;
  bool isJson = false;
};

// A line that the screen may be too narrow for; what follows is indented as far.
void show(const std::string& line, std::size_t indent) {
  for (const std::string& row : terminal::wrapped(line, terminal::screenColumns(), std::string(indent, ' ')))
    std::cout << row << '\n';
}

void showClass(const ClassDescription& description) {
  const bool isHandedOut = description.create == nullptr;
  show(qualifiedName(description) + ": " + inLanguage(description.help) +
           (isHandedOut ? say(" Lo entrega el objeto impresora.", " Handed out by the printer object.") : ""),
       4);
  std::cout << '\n';
  for (const auto& group : memberGroups(description)) {
    show("  " + signature(group, inLanguage), 10);
    show("      " + inLanguage(group.front().help), 6);
  }
  std::cout << '\n';
}

void showEnumeration(const EnumerationDescription& enumeration) {
  std::cout << enumeration.name << "\n\n";
  for (const EnumerationValue& each : enumeration.values)
    std::cout << "  " << each.name << " = " << each.value << '\n';
  std::cout << '\n';
}

void showMember(const ClassDescription& description, std::span<const Member> group) {
  const Member& member = group.front();
  show(std::string(description.name) + "." + signature(group, inLanguage), 4);
  std::cout << '\n';
  show("  " + inLanguage(member.help), 2);
  for (const Parameter& parameter : member.parameters) {
    show("  " + std::string(parameter.name) + ": " + inLanguage(parameter.note), 6);
  }
  if (const std::string outcomes = outcomesText(member, inLanguage); !outcomes.empty()) {
    std::cout << say("  Resultado, ", "  Outcome, ") << outcomes << '\n';
  }
  std::cout << '\n';
}

bool isPartOf(std::string_view whole, std::string_view part) {
  const auto isSame = [](char one, char other) { return asciiLower(one) == asciiLower(other); };
  return part.empty() ||
         std::search(whole.begin(), whole.end(), part.begin(), part.end(), isSame) != whole.end();
}

// The members, classes and enumerations whose name has this in it, a line each.
bool showNamesWith(const std::string& part) {
  std::vector<std::string> lines;
  for (const ClassDescription* description : libraryClasses()) {
    if (isPartOf(description->name, part)) lines.emplace_back(description->name);
    for (const auto& group : memberGroups(*description))
      if (const Member& member = group.front(); isPartOf(member.name, part))
        lines.push_back(std::string(description->name) + "." + std::string(member.name) + ": " +
                        inLanguage(member.help));
  }
  for (const EnumerationDescription& enumeration : libraryEnumerations())
    for (const EnumerationValue& each : enumeration.values)
      if (isPartOf(each.name, part) || isPartOf(enumeration.name, part))
        lines.push_back(std::string(enumeration.name) + ": " + std::string(each.name) + " = " +
                        std::to_string(each.value));
  if (lines.empty()) return false;
  std::cout << say("Nada se llama así; lo tienen en el nombre:\n\n",
                   "Nothing has this name; these have it in theirs:\n\n");
  for (const std::string& line : lines) show("  " + line, 6);
  return true;
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

int runMembers(const MembersOptions& options) {
  std::string json;
  bool found = forEachMatch(options.name, [&](const auto& description, auto members, bool isWhole) {
    if (options.isJson) {
      json += (json.empty() ? "" : ",\n") + classJson(description, members);
    } else if (isWhole) {
      showClass(description);
    } else {
      showMember(description, members);
    }
  });
  if (options.isJson && found) std::cout << terminal::whole('[' + json + "]\n");
  if (!options.isJson) found = showEnumerations(options.name) || found;
  if (found || (!options.isJson && showNamesWith(options.name))) return exitDone;
  throw std::runtime_error(say("no hay clase, miembro ni enumeración \"{}\": {} los muestra todos",
                               "no class, member or enumeration \"{}\": {} lists all",
                               {options.name, terminal::quoted("zentaro members")}));
}

}  // namespace

void addMembersCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<MembersOptions>();
  CLI::App* command = app.add_subcommand("members", say("Muestra las clases y sus miembros, o explica uno",
                                                        "List the classes and members, or explain one"));
  command
      ->add_option(say("NOMBRE", "NAME"), options->name,
                   say("Clase, miembro o enumeración, o parte de su nombre",
                       "A class, member or enumeration, or a part of its name"))
      ->type_name("");
  command->add_flag(
      "--json", options->isJson,
      say("Como JSON, con parámetros y resultados", "As JSON, with parameters, defaults and outcomes"));
  command->callback([options, &status] { status = guarded([&] { return runMembers(*options); }); });
}

}  // namespace zentaro::tools
