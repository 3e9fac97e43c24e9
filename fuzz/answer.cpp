// What a line can bring as an answer. The first byte says how it comes in pieces and whether the checksum is
// verified, the second is the sequence number that is expected; the rest is what arrives.
#include "printer/answer.h"

#include <algorithm>

#include "check.h"
#include "printer/frame.h"
#include "printer/receiver.h"
#include "text/code_page.h"

namespace {

using namespace zentaro;
using fuzz::require;

constexpr std::u16string_view delimiters = u"\x1C\x03";

Receiver received(std::u16string_view text, std::size_t pieceSize) {
  Receiver receiver;
  for (; !text.empty(); text.remove_prefix(std::min(pieceSize, text.size())))
    receiver.feed(std::u16string(text.substr(0, pieceSize)));
  return receiver;
}

std::vector<std::u16string> tokensOf(std::u16string_view text) {
  std::vector<std::u16string> tokens(1);
  for (const char16_t c : text) {
    if (delimiters.find(c) == std::u16string_view::npos)
      tokens.back() += c;
    else if (!tokens.back().empty())
      tokens.emplace_back();
  }
  if (tokens.back().empty()) tokens.pop_back();
  return tokens;
}

std::u16string fourDigits(std::u16string_view body) {
  std::uint32_t sum = 0;
  for (const char16_t c : body) sum += windows1252().encode(c);
  std::u16string digits;
  for (int shift = 12; shift >= 0; shift -= 4) digits += u"0123456789ABCDEF"[(sum >> shift) & 15];
  return digits;
}

void checkFields(const Answer& answer, std::u16string_view text) {
  std::vector<std::u16string> tokens = tokensOf(text.size() > 4 ? text.substr(4) : u"");
  while (tokens.size() < 2) tokens.emplace_back();
  const auto& fields = answer.fields.items();
  require(fields.size() == tokens.size() + 1, "as many fields as there are texts between separators");
  for (std::size_t i = 0; i < tokens.size(); ++i)
    require(fields[i + 1].text() == tokens[i], "each field is the text between its separators");
}

// The accepted fields in a frame of one's own are accepted again, as the same fields.
void checkAgain(const Answer& answer, std::u16string_view text, std::int16_t sequence) {
  const std::size_t etx = text.find(ETX);
  if (text.size() < 4 || etx == std::u16string_view::npos || etx < 4 || text[3] != FS) return;
  const std::u16string_view tail = text.substr(etx + 1);
  const auto& fields = answer.fields.items();
  if (tail.empty() || tail.find_first_of(delimiters) != std::u16string_view::npos || fields.size() < 4)
    return;
  std::u16string frame(text.substr(0, 3));
  for (std::size_t i = 1; i + 1 < fields.size(); ++i) frame += FS + fields[i].text();
  frame += ETX;
  frame += fourDigits(frame);
  const Answer again = checkAnswer(frame, sequence, true, windows1252());
  require(again.outcome == answer.outcome, "accepted fields in a new frame have the same outcome");
  require(again.fields.items().size() == fields.size(), "and the same number of fields");
  for (std::size_t i = 1; i + 1 < fields.size(); ++i)
    require(again.fields.items()[i].text() == fields[i].text(), "and the same fields");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 3) return 0;
  const bool verify = (data[0] & 1) != 0;
  const auto sequence = static_cast<std::int16_t>(data[1]);
  const std::u16string line = windows1252().text(fuzz::textOf(data + 2, size - 2));

  const Receiver inPieces = received(line, 1U + (data[0] >> 1)), atOnce = received(line, line.size());
  require(inPieces.complete() == atOnce.complete(), "whether it is complete does not depend on the pieces");
  require(inPieces.text() == atOnce.text(), "what is received does not depend on the pieces");

  const Answer answer = checkAnswer(atOnce.text(), sequence, verify, windows1252());
  if (answer.failed()) {
    require(answer.fields.items().size() == 1, "a failed answer leaves one element");
    require(answer.printerStatus == 0x8000 && answer.fiscalStatus == 0x8000, "and both words as failed");
    return 0;
  }
  const std::u16string text = atOnce.text().substr(atOnce.text().find(STX));
  require(windows1252().encode(text[1]) == sequence, "an accepted answer carries the sequence number");
  const std::size_t etx = text.find(ETX);
  // Digits of either case, and fewer of them behind which something else stands, are a sum too.
  if (verify && etx != std::u16string::npos && tokensOf(text.substr(etx + 1)).size() == 1) {
    std::u16string digits = text.substr(etx + 1, 4);
    for (char16_t& c : digits) c = c >= u'a' && c <= u'f' ? static_cast<char16_t>(c - 32) : c;
    if (digits.find_first_not_of(u"0123456789ABCDEF") == std::u16string::npos && digits.size() == 4)
      require(digits == fourDigits(text.substr(0, etx + 1)), "a verified answer has its own sum");
  }
  checkFields(answer, text);
  checkAgain(answer, text, sequence);
  return 0;
}
