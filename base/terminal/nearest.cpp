// Counting the letters that differ.
#include "base/terminal/nearest.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zentaro::terminal {

namespace {

std::string lower(std::string_view text) {
  std::string result(text);
  for (char& letter : result)
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  return result;
}

// Insertions, omissions and changes.
std::size_t distance(std::string_view one, std::string_view other) {
  std::vector<std::size_t> row(other.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < one.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < other.size(); ++j) {
      const std::size_t changed = diagonal + (one[i] == other[j] ? 0 : 1);
      diagonal = std::exchange(row[j + 1], std::min({changed, row[j] + 1, row[j + 1] + 1}));
    }
  }
  return row.back();
}

}  // namespace

std::string nearest(std::string_view word, const std::vector<std::string>& candidates) {
  constexpr std::size_t tooFar = 3, leastBeginning = 4;
  const std::string meant = lower(word);
  std::string found;
  std::size_t least = tooFar;
  for (const std::string& candidate : candidates) {
    const std::size_t letters = distance(meant, lower(candidate));
    const bool isBeginning = meant.size() >= leastBeginning && lower(candidate).starts_with(meant);
    const std::size_t far = isBeginning ? std::min<std::size_t>(letters, 1) : letters;
    if (far < least && far < candidate.size()) found = candidate;
    least = std::min(least, far);
  }
  return found;
}

}  // namespace zentaro::terminal
