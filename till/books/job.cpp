// The names by which the books keep kinds, states and turns.
#include "till/books/job.h"

#include <algorithm>

namespace zentaro::till {

std::string_view nameOf(Kind kind) {
  switch (kind) {
    case Kind::Invoice: return "invoice";
    case Kind::CreditNote: return "credit-note";
    case Kind::X: return "X";
    case Kind::Z: break;
  }
  return "Z";
}

std::string_view nameOf(State state) {
  switch (state) {
    case State::Queued: return "queued";
    case State::Printing: return "printing";
    case State::Printed: return "printed";
    case State::NotPrinted: return "not-printed";
    case State::Unknown: break;
  }
  return "unknown";
}

std::string_view nameOf(Turn turn) {
  switch (turn) {
    case Turn::None: return "";
    case Turn::Open: return "open";
    case Turn::Lines: return "lines";
    case Turn::Close: return "close";
    case Turn::Finish: return "finish";
    case Turn::Cancel: break;
  }
  return "cancel";
}

bool isJobId(std::string_view text) {
  constexpr std::size_t longest = 128;
  const auto isOfAlphabet = [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
           std::string_view("._~:-").find(c) != std::string_view::npos;
  };
  return !text.empty() && text.size() <= longest && std::ranges::all_of(text, isOfAlphabet);
}

}  // namespace zentaro::till
