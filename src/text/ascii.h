// Characters and names of the ASCII range, whatever the locale: digits, blanks, and comparison
// without regard to case.
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

template <class Character>
constexpr bool isAsciiLetter(Character character) {
  return asciiLower(character) >= 'a' && asciiLower(character) <= 'z';
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

}  // namespace zentaro
