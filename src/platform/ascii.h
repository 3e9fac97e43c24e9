// Characters and names of the ASCII range, whatever the locale: digits, blanks, and comparison without regard
// to case.
#pragma once

#include <algorithm>
#include <string_view>

namespace zentaro {

template <class Character>
constexpr Character asciiLower(Character character) {
  return character >= 'A' && character <= 'Z' ? static_cast<Character>(character + ('a' - 'A')) : character;
}

template <class Character>
constexpr bool isAsciiDigit(Character character) {
  return character >= '0' && character <= '9';
}

/// A space or a tab.
template <class Character>
constexpr bool isBlank(Character character) {
  return character == ' ' || character == '\t';
}

template <class Character>
constexpr bool equalIgnoringCase(std::basic_string_view<Character> left,
                                 std::basic_string_view<Character> right) {
  return std::ranges::equal(left, right, {}, asciiLower<Character>, asciiLower<Character>);
}
constexpr bool equalIgnoringCase(std::string_view left, std::string_view right) {
  return equalIgnoringCase<char>(left, right);
}

/// The text without the blanks at its ends.
template <class Character>
constexpr std::basic_string_view<Character> trimmed(std::basic_string_view<Character> text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace zentaro
