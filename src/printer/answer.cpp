// Checking and splitting an answer.
#include "printer/answer.h"

#include <algorithm>

#include "automation/numbers.h"
#include "printer/frame.h"
#include "util/lm_strtok.h"

namespace zentaro {

namespace {

constexpr std::int32_t errorBit = 0x8000;

Answer failure(ENVERR_CODES outcome, const std::u16string& received,
               std::optional<std::u16string> errorText = {}) {
  return {outcome, errorBit, errorBit, std::move(errorText), Array{Variant()}, received};
}

// From the STX through the first ETX behind it; all of the text when an ETX stood only in the junk before the
// STX.
std::u16string_view bodyOf(std::u16string_view answer) {
  return answer.substr(0, std::min(answer.find(ETX), answer.size() - 1) + 1);
}

std::u16string errorTextOf(std::u16string_view body) {
  const std::size_t start = body.find(u"ERROR");
  if (start == std::u16string_view::npos) return u"VOID";
  return std::u16string(body.substr(start, body.find_first_of(std::u16string{FS, ETX}, start) - start));
}

// The sum is compared modulo 65,536: an answer has only four digits for it.
bool checkSumMatches(std::u16string_view answer, std::u16string_view body, const CodePage& codePage) {
  std::uint32_t sum = 0;
  for (const char16_t character : body) sum += codePage.encode(character);
  return (sum & 0xFFFF) == leadingHex(answer.substr(body.size(), 4));
}

std::int32_t statusWord(const Variant& text, ENVERR_CODES& outcome) {
  const auto word = static_cast<std::int32_t>(leadingHex(text.text()));
  if ((word & errorBit) != 0) outcome = ENVERR_STATUS;
  return word;
}

// A run of delimiters is one separator, so an empty field gives no element and the later ones move down.
std::vector<Variant> split(const std::u16string& text) {
  const std::u16string delimiters{FS, ETX};
  std::vector<Variant> tokens;
  // An empty text would go on with whatever was split before.
  if (text.empty()) return tokens;
  for (std::u16string token = lmstrtok(text, delimiters); !token.empty(); token = lmstrtok(u"", delimiters)) {
    tokens.emplace_back(token);
  }
  return tokens;
}

}  // namespace

Answer timedOut(const std::u16string& received) { return failure(ENVERR_COMM, received); }

Answer checkAnswer(const std::u16string& received, std::int16_t expectedSequence, bool verifyCheckSum,
                   const CodePage& codePage) {
  const std::size_t start = received.find(STX);
  if (start == std::u16string::npos) return failure(ENVERR_INVALID, received);
  const std::u16string answer = received.substr(start);
  const std::u16string_view body = bodyOf(answer);
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
  std::vector<Variant> fields = split(result.traced.size() > 2 ? result.traced.substr(2) : u"");
  // Both status texts exist even in an answer that is cut short before them.
  while (fields.size() < 2) fields.emplace_back(u"");
  result.printerStatus = statusWord(fields[0], result.outcome);
  result.fiscalStatus = statusWord(fields[1], result.outcome);
  fields.insert(fields.begin(),
                static_cast<std::int16_t>(result.traced.empty() ? 0 : codePage.encode(result.traced[0])));
  result.fields = Array(std::move(fields));
  return result;
}

}  // namespace zentaro
