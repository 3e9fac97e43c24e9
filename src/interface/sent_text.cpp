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

std::string phraseOf(const SentField& field) {
  std::string phrase = nameOf(field.encoding).phrase;
  if (field.encoding == Encoding::ItemText && field.size == 0) return phrase.substr(0, phrase.find(" and #"));
  if (const auto place = phrase.find('#'); place != std::string::npos) {
    phrase.replace(place, 1, std::to_string(field.size));
  }
  return phrase;
}

std::string fieldText(const SentField& field) {
  if (field.encoding != Encoding::Constant) return std::string(field.source);
  return field.source.empty() ? "empty" : '"' + std::string(field.source) + '"';
}

std::string commandText(const SentCommand& command) {
  std::string text = codeText(command.code);
  if (!command.when.empty()) text += " (" + std::string(command.when) + ")";
  if (command.fields.empty()) return text + ": no fields";
  const auto isEmpty = [](const SentField& field) { return fieldText(field) == "empty"; };
  const char* between = ": ";
  for (const auto* field = command.fields.begin(); field != command.fields.end();) {
    const auto* const end = std::find_if_not(field, command.fields.end(), isEmpty);
    text += between + (end - field > 1 ? std::to_string(end - field) + " empty" : fieldText(*field));
    field = std::max(field + 1, end);
    between = ", ";
  }
  return text;
}

}  // namespace

std::string_view encodingName(Encoding encoding) { return nameOf(encoding).name; }

std::string sentText(const Effect& effect) {
  std::string text(effect.sendsOther);
  for (const SentCommand& command : effect.commands) {
    if (!text.empty()) text += command.when.empty() ? "; " : "; or ";
    text += commandText(command);
  }
  return text;
}

std::string meaning(const Member& member, const Parameter& parameter) {
  // Behind what it means, in front of what else is to be said.
  const std::string_view note = parameter.note, means = note.substr(0, note.find(';'));
  std::string text(means);
  for (const SentCommand& command : member.effect.commands) {
    for (const SentField& field : command.fields) {
      if (field.encoding == Encoding::Constant || field.source != parameter.name) continue;
      const std::string phrase = phraseOf(field);
      if (text.find(phrase) == std::string::npos) text += ", " + phrase;
    }
  }
  return text.append(note.substr(means.size()));
}

}  // namespace zentaro
