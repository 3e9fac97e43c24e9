// What a short date may be made of.
#include "platform/regional_settings.h"

#include "text/ascii.h"

namespace zentaro {
namespace {

/// The letter's only run in the pattern; empty when there is none, or more than one.
std::u16string_view onlyRun(std::u16string_view pattern, char16_t letter) {
  const auto first = pattern.find(letter);
  if (first == std::u16string_view::npos) return {};
  const auto run = pattern.substr(first, pattern.find_first_not_of(letter, first) - first);
  return pattern.find(letter, first + run.size()) == std::u16string_view::npos ? run : std::u16string_view();
}

}  // namespace

bool isShortDate(std::u16string_view pattern) {
  std::size_t digits = 0, letters = 0;
  for (const char16_t part : {u'd', u'm'}) {
    const auto length = onlyRun(pattern, part).size();
    if (length != 1 && length != 2) return false;
    digits += length;
  }
  const auto year = onlyRun(pattern, u'y').size();
  for (const char16_t c : pattern) letters += isAsciiLetter(c) ? 1U : 0U;
  return (year == 2 || year == 4) && letters == digits + year;
}

}  // namespace zentaro
