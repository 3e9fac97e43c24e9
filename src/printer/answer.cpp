// The checks have a fixed order: the first that fails decides the outcome and what is kept.
#include "printer/answer.h"

#include <algorithm>
#include <utility>

#include "automation/numbers.h"
#include "printer/frame.h"
#include "util/lm_strtok.h"

namespace zentaro {

namespace {

constexpr std::int32_t errorBit = 0x8000;

Answer failure(ENVERR_CODES outcome, std::u16string_view received,
               std::optional<std::u16string> errorText = {}) {
  return {outcome, errorBit, errorBit, std::move(errorText), Array{Variant()}, received};
}

/// From the STX through the first ETX behind it; all of a text without one.
std::u16string_view bodyOf(std::u16string_view answer) {
  return answer.substr(0, std::min(answer.find(ETX), answer.size() - 1) + 1);
}

std::u16string errorTextOf(std::u16string_view body) {
  const std::size_t start = body.find(u"ERROR");
  if (start == std::u16string_view::npos) return u"VOID";
  return std::u16string(body.substr(start, body.find_first_of(std::u16string{FS, ETX}, start) - start));
}

/// The sum is compared modulo 65,536: an answer has only four digits for it.
bool checkSumMatches(std::u16string_view answer, std::u16string_view body, const CodePage& codePage) {
  std::uint32_t sum = 0;
  for (const char16_t character : body) sum += codePage.encode(character);
  return (sum & 0xFFFF) == leadingHex(answer.substr(body.size(), 4));
}

std::int32_t statusWord(const Variant& text, ENVERR_CODES& outcome) {
  const auto word = static_cast<std::int32_t>(leadingHex(text.text()) & 0xFFFF);
  if ((word & errorBit) != 0) outcome = ENVERR_STATUS;
  return word;
}

/// A run of delimiters is one separator, so an empty field gives no element and the later ones move down.
void split(std::u16string_view text, std::vector<Variant>& fields) {
  constexpr char16_t delimiters[] = {FS, ETX, 0};
  // An empty text would go on with whatever was split before.
  if (text.empty()) return;
  for (std::u16string token = lmstrtok(text, delimiters); !token.empty(); token = lmstrtok({}, delimiters)) {
    fields.emplace_back(std::move(token));
  }
}

}  // namespace

Answer timedOut(std::u16string_view received) { return failure(ENVERR_COMM, received); }

Answer checkAnswer(std::u16string_view received, std::int16_t expectedSequence, bool verifyCheckSum,
                   const CodePage& codePage) {
  const std::size_t start = received.find(STX);
  if (start == std::u16string_view::npos) return failure(ENVERR_INVALID, received);
  const std::u16string_view answer = received.substr(start), body = bodyOf(answer);
  const std::u16string errorText = errorTextOf(body);
  if (verifyCheckSum && !checkSumMatches(answer, body, codePage)) {
    return failure(ENVERR_CHECKSUM, answer, errorText);
  }
  if (answer.size() < 2 || codePage.encode(answer[1]) != expectedSequence) {
    return failure(ENVERR_BADSEQ, answer, errorText);
  }

  Answer result;
  result.errorText = errorText;
  result.traced = answer.substr(2);
  const std::u16string_view command = result.traced.substr(0, 1), rest = result.traced.substr(command.size());
  std::vector<Variant> fields;
  fields.reserve(static_cast<std::size_t>(std::ranges::count(rest, FS)) + 3);
  fields.emplace_back(std::int16_t{command.empty() ? std::uint8_t{0} : codePage.encode(command.front())});
  split(rest.substr(std::min<std::size_t>(rest.size(), 1)), fields);
  // Both status texts exist even in an answer that is cut short before them.
  while (fields.size() < 3) fields.emplace_back(u"");
  result.printerStatus = statusWord(fields[1], result.outcome);
  result.fiscalStatus = statusWord(fields[2], result.outcome);
  result.fields = Array(std::move(fields));
  return result;
}

}  // namespace zentaro
