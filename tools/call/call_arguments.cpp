// Words as values, and what is checked before a port is opened.
#include "tools/call/call_arguments.h"

#include <charconv>
#include <stdexcept>

#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "interface/library.h"
#include "text/ascii.h"
#include "tools/show/iso_date.h"
#include "tools/show/signatures.h"

namespace zentaro::tools {

namespace {

// All of the text, and in the one way in which a number is usually written.
template <class Number>
std::optional<Number> numberIn(std::string_view text) {
  const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
  const bool hasLeadingZero = digits.size() > 1 && digits[0] == '0' && isAsciiDigit(digits[1]);
  if (digits.empty() || !isAsciiDigit(digits.front()) || !isAsciiDigit(digits.back()) || hasLeadingZero) {
    return std::nullopt;
  }
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

// What somebody who writes decimals behind a comma means by a word; empty when it is no such number.
std::string withPoint(std::string_view word) {
  const std::string_view digits = word.starts_with('-') ? word.substr(1) : word;
  const bool isNumber = digits.find_first_not_of("0123456789.,") == std::string_view::npos &&
                        digits.find(',') != std::string_view::npos && isAsciiDigit(digits.front()) &&
                        isAsciiDigit(digits.back());
  if (!isNumber) return {};
  const std::size_t decimals = word.find_last_of(".,");
  std::string text;
  for (std::size_t index = 0; index < word.size(); ++index) {
    if (index == decimals)
      text += '.';
    else if (word[index] != ',' && word[index] != '.')
      text += word[index];
  }
  return text;
}

// The names that begin as the wrong one does, or all of them by the command that lists them.
std::string suggestion(const ClassDescription& description, std::string_view name) {
  constexpr std::size_t enough = 4;
  const std::string_view start = name.substr(0, enough);
  std::string similar;
  for (const auto& group : memberGroups(description)) {
    const std::string_view known = group.front().name;
    if (equalIgnoringCase(known.substr(0, enough), start)) similar += " " + std::string(known);
  }
  if (similar.empty())
    return terminal::say("{} los muestra", "{} lists all", {terminal::quoted("zentaro members")});
  return terminal::say("hay", "there is") + similar;
}

std::size_t requiredCount(const Member& member) {
  std::size_t count = 0;
  for (const Parameter& parameter : member.parameters) count += parameter.isOptional() ? 0U : 1U;
  return count;
}

// "CIERRE_Z" where the parameter is of the enumeration that has this name.
std::optional<std::int32_t> namedValue(const Parameter& parameter, std::string_view word) {
  if (parameter.type.kind != ValueType::Enumeration) return std::nullopt;
  for (const EnumerationDescription& enumeration : libraryEnumerations())
    for (const EnumerationValue& value : enumeration.values)
      if (equalIgnoringCase(value.name, word)) return value.value;
  return std::nullopt;
}

}  // namespace

Variant argumentOf(std::string_view word) {
  constexpr std::string_view forcedText = "text:";
  if (word.starts_with(forcedText)) return std::string(word.substr(forcedText.size()));
  if (word == "true" || word == "false") return word == "true";
  if (const auto whole = numberIn<std::int64_t>(word)) return *whole;
  if (const auto number = numberIn<double>(word)) return *number;
  if (const auto date = dateFromIso(word)) return *date;
  if (const std::string number = withPoint(word); !number.empty())
    throw std::runtime_error(
        terminal::say("\"{}\" tiene una coma: escriba {} como número, o text:{} como texto",
                      "\"{}\" has a comma: write {} for the number, or text:{} for the text",
                      {terminal::harmless(word), number, word}));
  return std::string(word);
}

CallRequest callRequest(const ClassDescription& description, const std::vector<std::string>& words) {
  const std::string& name = words.at(0);
  CallRequest request{findMember(description, name), {}};
  if (request.member.empty()) {
    throw std::runtime_error(terminal::say("no hay un miembro \"{}\": {}", "no member \"{}\": {}",
                                           {name, suggestion(description, name)}));
  }
  const Member& member = request.member.front();
  const std::size_t given = words.size() - 1;
  const bool isMethod = member.access == Access::Call;
  if (!isMethod && given > 0) {
    throw std::runtime_error(terminal::say("{} es una propiedad: aquí solo se lee, sin argumentos",
                                           "{} is a property: it is only read here, without arguments",
                                           {member.name}));
  }
  if (isMethod && (given < requiredCount(member) || given > member.parameters.size())) {
    throw std::runtime_error(terminal::say("número de argumentos errado ({}): {}",
                                           "wrong number of arguments ({}): {}",
                                           {std::to_string(given), signature(request.member)}));
  }
  for (std::size_t index = 1; index < words.size(); ++index) {
    const auto named = namedValue(member.parameters[index - 1], words[index]);
    request.arguments.push_back(named ? Variant(*named) : argumentOf(words[index]));
  }
  return request;
}

}  // namespace zentaro::tools
