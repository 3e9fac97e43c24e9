// Taking away what stands around a text. What counts as nothing differs with where the text comes
// from, so each meaning has its own name.
#pragma once

#include <string_view>

namespace zentaro {

/// The text without those of its first and last characters that `outer` names.
template <class Character>
constexpr std::basic_string_view<Character> without(std::basic_string_view<Character> text,
                                                    std::string_view outer) {
  const auto isOuter = [outer](Character character) {
    return character < 128 && outer.find(static_cast<char>(character)) != outer.npos;
  };
  while (!text.empty() && isOuter(text.front())) text.remove_prefix(1);
  while (!text.empty() && isOuter(text.back())) text.remove_suffix(1);
  return text;
}

/// Spaces only: what a printer or the system pads a text with.
template <class Character>
constexpr auto withoutSpaces(std::basic_string_view<Character> text) {
  return without(text, " ");
}
/// Spaces and tabs: what people put around a word of one line.
template <class Character>
constexpr auto trimmed(std::basic_string_view<Character> text) {
  return without(text, " \t");
}
/// Spaces, tabs and line ends: what may stand around a number that somebody typed or read from a file.
template <class Character>
constexpr auto withoutWhiteSpace(std::basic_string_view<Character> text) {
  return without(text, " \t\r\n");
}

}  // namespace zentaro
