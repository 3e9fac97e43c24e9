// Commands and their fields as text.
#include "interface/sent_text.h"

#include <algorithm>

#include "text/digits.h"
#include "text/unicode.h"

namespace zentaro {

namespace {

std::string codeText(std::int16_t code) {
  return "0x" + utf8(hexadecimalText(static_cast<std::uint32_t>(code), 2));
}

struct EncodingName {
  Encoding encoding;
  const char* name;    // in JSON
  const char* phrase;  // behind a parameter's meaning; # is the size
};
constexpr EncodingName encodingNames[] = {
    {Encoding::Constant, "constant", ""},
    {Encoding::AsGiven, "as given", "sent as given"},
    {Encoding::Cleaned, "characters", "# characters"},
    {Encoding::ItemText, "item text", "as many characters as the setting LenDescripcionZT says and # more"},
    {Encoding::Start, "start", "the first # characters as they are"},
    {Encoding::Implied, "implied decimals", "# implied decimals"},
    {Encoding::Day, "yymmdd", "as yymmdd"},
    {Encoding::Time, "hhnnss", "as hhnnss"},
    {Encoding::Digits8, "eight digits", "with eight digits"},
    {Encoding::Amount, "regional amount", "with two decimals and the regional separators"},
    {Encoding::ShortDate, "regional date", "as the regional short date"},
    {Encoding::Letter, "letter", "in upper case"},
};
const EncodingName& nameOf(Encoding encoding) {
  return *std::ranges::find(encodingNames, encoding, &EncodingName::encoding);
}

std::string withNumber(std::string phrase, std::ptrdiff_t number) {
  const auto place = phrase.find('#');
  return place == std::string::npos ? phrase : phrase.replace(place, 1, std::to_string(number));
}

std::string phraseOf(const SentField& field, Wording wording) {
  std::string_view phrase = nameOf(field.encoding).phrase;
  if (field.encoding == Encoding::ItemText && field.size == 0)
    phrase = phrase.substr(0, phrase.find(" and #"));
  return withNumber(std::string(wording(phrase)), field.size);
}

bool isEmpty(const SentField& field) { return field.encoding == Encoding::Constant && field.source.empty(); }

std::string fieldText(const SentField& field, Wording wording) {
  if (isEmpty(field)) return std::string(wording("empty"));
  const std::string source(field.source);
  return field.encoding == Encoding::Constant ? '"' + source + '"' : source;
}

std::string commandText(const SentCommand& command, Wording wording) {
  std::string text = codeText(command.code);
  if (!command.when.empty()) text += " (" + std::string(wording(command.when)) + ")";
  if (command.fields.empty()) return text + ": " + std::string(wording("no fields"));
  const char* between = ": ";
  for (const auto* field = command.fields.begin(); field != command.fields.end();) {
    const auto* const end = std::find_if_not(field, command.fields.end(), isEmpty);
    text += between + (end - field > 1 ? withNumber(std::string(wording("# empty")), end - field)
                                       : fieldText(*field, wording));
    field = std::max(field + 1, end);
    between = ", ";
  }
  return text;
}

}  // namespace

std::string_view encodingName(Encoding encoding) { return nameOf(encoding).name; }

std::string sentText(const Effect& effect, Wording wording) {
  std::string text(wording(effect.sendsOther));
  for (const SentCommand& command : effect.commands) {
    if (!text.empty()) text += command.when.empty() ? "; " : wording("; or ");
    text += commandText(command, wording);
  }
  return text;
}

std::string meaning(const Member& member, const Parameter& parameter, Wording wording) {
  // Behind what it means, in front of what else is to be said.
  const std::string_view note = wording(parameter.note), means = note.substr(0, note.find(';'));
  std::string text(means);
  for (const SentCommand& command : member.effect.commands) {
    for (const SentField& field : command.fields) {
      if (field.encoding == Encoding::Constant || field.source != parameter.name) continue;
      const std::string phrase = phraseOf(field, wording);
      if (text.find(phrase) == std::string::npos) text += ", " + phrase;
    }
  }
  return text.append(note.substr(means.size()));
}

}  // namespace zentaro
