// The number of a port in its name.
#pragma once

#include <charconv>
#include <string_view>

namespace zentaro {

/// The n of "COMn", without a zero in front; 0 for any other name.
inline int portNumber(std::string_view name) {
  constexpr std::string_view prefix = "COM";
  if (!name.starts_with(prefix) || name.substr(prefix.size()).starts_with('0')) return 0;
  int number = 0;
  const auto [end, error] = std::from_chars(name.data() + prefix.size(), name.data() + name.size(), number);
  return error == std::errc{} && end == name.data() + name.size() && number > 0 ? number : 0;
}

}  // namespace zentaro
