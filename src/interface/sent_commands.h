// What a member sends, as the rows of the member table write it down: commands, and how each field is made.
#pragma once

#include <algorithm>
#include <string_view>

#include "automation/description.h"
#include "printer/command.h"

namespace zentaro::table {

inline constexpr SentField emptyField{Encoding::Constant};
constexpr SentField constant(std::string_view text) { return {Encoding::Constant, text}; }
constexpr SentField asGiven(std::string_view parameter) { return {Encoding::AsGiven, parameter}; }
constexpr SentField cleaned(std::string_view parameter, int characters) {
  return {Encoding::Cleaned, parameter, characters};
}
constexpr SentField itemText(std::string_view parameter, int more = 0) {
  return {Encoding::ItemText, parameter, more};
}
constexpr SentField implied(std::string_view parameter, int decimals) {
  return {Encoding::Implied, parameter, decimals};
}

constexpr SentCommand command(Command code, ConstantList<SentField, 9> fields = {},
                              std::string_view when = {}) {
  return {static_cast<std::int16_t>(code), fields, when};
}

using SentCommands = ConstantList<SentCommand, 3>;
/// The usual operation: refused on a closed port.
constexpr Effect sends(SentCommands commands) { return {commands, {}, checksPort | exchanges}; }
/// The same, and 6 for an argument outside its range.
constexpr Effect sendsChecked(SentCommands commands) {
  return {commands, {}, checksPort | exchanges | checksArgument};
}
/// Sent whether the port is open or not.
constexpr Effect sendsAlways(SentCommands commands) { return {commands, {}, exchanges}; }
/// Only 6, for an argument outside its range.
inline constexpr Effect sendsNothing{{}, {}, checksArgument};
/// What is no command of the library's own.
constexpr Effect sendsOther(std::string_view what, unsigned outcomes) { return {{}, what, outcomes}; }

consteval bool isNamed(const ParameterList& parameters, std::string_view name) {
  return std::ranges::any_of(parameters, [=](const Parameter& parameter) { return parameter.name == name; });
}
/// Whether every field that is no constant is made of one of the parameters.
consteval bool namesItsParameters(const Effect& effect, const ParameterList& parameters) {
  for (const SentCommand& command : effect.commands) {
    for (const SentField& field : command.fields) {
      if (field.encoding != Encoding::Constant && !isNamed(parameters, field.source)) return false;
    }
  }
  return true;
}

}  // namespace zentaro::table
