// The words of a command line as arguments of a member.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "automation/description.h"
#include "automation/variant.h"

namespace zentaro::tools {

/// A whole number, a decimal with a point, true or false, a date like 2024-03-15 or 2024-03-15T14:05:00;
/// anything else is a text, as is everything behind "text:" and a number with leading zeros. Raises
/// std::runtime_error for a number with a comma, which names what to write instead.
Variant argumentOf(std::string_view word);

/// The member, and the arguments that it takes. Raises std::runtime_error, which says what there is instead,
/// for an unknown name, a property with arguments and a wrong number of arguments.
struct CallRequest {
  std::span<const Member> member;
  std::vector<Variant> arguments;
};
CallRequest callRequest(const ClassDescription& description, const std::vector<std::string>& words);

}  // namespace zentaro::tools
