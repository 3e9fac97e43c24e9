// The reference manual in Markdown.
#include "members/reference.h"

#include <sstream>

#include "common/signatures.h"
#include "interface/library.h"
#include "interface/sent_text.h"
#include "interface/type_names.h"
#include "platform/setting_keys.h"
#include "printer/outcome.h"
#include "text/unicode.h"

namespace zentaro::tools {

namespace {

constexpr std::string_view preface = R"(# Reference

Every class and member of the library, as `zentaro members --markdown` prints it: change the descriptions in
`src/interface`, not this page.

## How values are sent

Each operation sends a command with fields and waits for the answer. The commands are given by their code, with
the fields in their order in the frame.

| In a note | Means |
|---|---|
| n characters | the text is cut to n characters, trimmed of blanks, and reduced to 7-bit characters: the accents of lower-case vowels and of N are dropped, a double quote becomes an apostrophe, any other character above 127 a full stop |
| n implied decimals | the value times 10^n as a whole number, halves rounded upward: 12.34 with 2 is `1234`, a quantity of 2 with 3 is `2000` |
| yymmdd, hhnnss | a date as year, month and day, a time as hour, minute and second, two digits each |
| sent as given | the value as its text, neither cut nor replaced |

STX, ETX and FS inside a text are sent as full stops. A value that does not convert raises an error before
anything is sent: 13 (type mismatch), 6 (overflow), 94 (invalid use of Null) or 5 (invalid argument). Opening a
port that cannot be opened raises 40001 with the reason.

When one of these errors is raised, something has left already:

- LlenarCheque and EndosarCheque, a text that does not convert: the slip station is on, and stays on.
- GetDateTime, GetStatusN, GetStatusHASAR and PerformReturnCierre, an answer that cannot be read (13, 9 or 6): the
  command was carried out; a Z closing is printed.
- Any operation while the object trace is on and its file cannot be written (52 to 76): perhaps.

Parameters in brackets are optional. By reference means that the member may see, and change, the caller's own
variable; only where a note says so is something written back.
)";

std::string cell(std::string_view text) {
  std::string escaped;
  for (const char character : text) escaped += character == '|' ? "\\|" : std::string(1, character);
  return escaped;
}

void writeParameters(std::ostream& page, const Member& member) {
  if (member.parameters.empty()) return;
  page << "| Parameter | Type | Passed | Meaning |\n|---|---|---|---|\n";
  for (const Parameter& parameter : member.parameters) {
    page << "| `" << parameter.name << "` | " << typeName(parameter.type) << " | "
         << (parameter.passing == Passing::ByReference ? "by reference" : "by value") << " | "
         << cell(meaning(member, parameter)) << " |\n";
  }
  page << '\n';
}

void writeMember(std::ostream& page, std::span<const Member> group) {
  const Member& member = group.front();
  page << "### " << member.name << "\n\n    " << signature(group) << "\n\n" << member.help << "\n\n";
  writeParameters(page, member);
  if (member.effect.sends()) page << "- Sends " << sentText(member.effect) << '\n';
  const std::string outcomes = outcomesText(member);
  if (!outcomes.empty()) page << "- Outcome, " << outcomes << '\n';
  if (member.effect.sends() || !outcomes.empty()) page << '\n';
}

void writeClass(std::ostream& page, const ClassDescription& description) {
  page << "\n## " << description.name << "\n\n"
       << description.help << " Interface `" << description.interfaceName << "`; "
       << (description.create == nullptr ? "handed out by the printer object." : "created as `")
       << (description.create == nullptr ? "" : qualifiedName(description) + "`.") << "\n\n";
  for (const auto& group : memberGroups(description)) writeMember(page, group);
}

void writeEnumeration(std::ostream& page, const EnumerationDescription& enumeration) {
  const bool areOutcomes = enumeration.name == "ENVERR_CODES";
  page << "\n## " << enumeration.name << "\n\n| Name | Value |" << (areOutcomes ? " Text |" : "")
       << "\n|---|---|" << (areOutcomes ? "---|" : "") << '\n';
  for (const auto& [name, value] : enumeration.values) {
    page << "| `" << name << "` | " << value << " |";
    if (areOutcomes) page << ' ' << utf8(outcomeText(static_cast<ENVERR_CODES>(value))) << " |";
    page << '\n';
  }
}

void writeSettings(std::ostream& page) {
  page << "\n## Settings\n\n| Section | Key | Default | Meaning |\n|---|---|---|---|\n";
  for (const SettingKey& setting : allSettings) {
    page << "| `" << setting.section << "` | `" << setting.key << "` | "
         << (setting.fallback.empty() ? "empty" : "`" + utf8(setting.fallback) + "`") << " | "
         << setting.meaning << " |\n";
  }
}

}  // namespace

std::string referencePage() {
  std::ostringstream page;
  page << preface;
  for (const EnumerationDescription& enumeration : libraryEnumerations()) writeEnumeration(page, enumeration);
  for (const ClassDescription* description : libraryClasses()) writeClass(page, *description);
  writeSettings(page);
  return page.str();
}

}  // namespace zentaro::tools
