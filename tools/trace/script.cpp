// Recorded answers, adapted to the request.
#include "tools/trace/script.h"

#include <charconv>

namespace zentaro::tools {

namespace {

constexpr int firstSequence = 0x21, sequences = 0x7F - 0x21 + 1;
using virtual_printer::checksumDigits;

int placeOf(char sequence) { return static_cast<unsigned char>(sequence) - firstSequence; }

/// As far from the request as the recorded one was from its command.
char movedSequence(char recorded, char recordedRequest, char request) {
  const int place = (placeOf(request) + placeOf(recorded) - placeOf(recordedRequest)) % sequences;
  return static_cast<char>(firstSequence + (place + sequences) % sequences);
}

unsigned sumOf(const std::string& bytes, const FrameBounds& bounds) {
  return virtual_printer::byteSum(std::string_view(bytes).substr(bounds.stx, bounds.etx - bounds.stx + 1));
}

/// Digits that are no number stay as they are.
void moveChecksum(std::string& bytes, const FrameBounds& bounds, unsigned sumBefore) {
  if (bytes.size() < bounds.etx + 1 + checksumDigits) return;
  char* digits = bytes.data() + bounds.etx + 1;
  unsigned recorded = 0;
  const auto [end, error] = std::from_chars(digits, digits + checksumDigits, recorded, 16);
  if (error != std::errc() || end != digits + checksumDigits) return;
  const unsigned moved = (recorded + sumOf(bytes, bounds) - sumBefore) & 0xFFFFU;
  bytes.replace(bounds.etx + 1, checksumDigits, virtual_printer::hexadecimal(moved, checksumDigits));
}

std::string adapted(const Exchange& exchange, char request) {
  if (!exchange.answer) return {};
  std::string bytes = exchange.answer->bytes;
  const FrameBounds bounds = frameBounds(bytes);
  if (!bounds.areFound()) return bytes;
  const unsigned sumBefore = sumOf(bytes, bounds);
  char& sequence = bytes[bounds.stx + 1];
  sequence = movedSequence(sequence, exchange.command->frame.content.sequence, request);
  moveChecksum(bytes, bounds, sumBefore);
  return bytes;
}

}  // namespace

Script::Script(const std::vector<Exchange>& exchanges) {
  for (const Exchange& exchange : exchanges)
    if (exchange.command && exchange.command->frame.form == DecodedFrame::Form::Frame)
      exchanges_[exchange.command->frame.content.code].push_back(exchange);
}

Script::Reply Script::answer(const virtual_printer::Command& request) {
  std::deque<Exchange>& recorded = exchanges_[request.code];
  if (recorded.empty()) return {{}, false};
  const Exchange next = std::move(recorded.front());
  recorded.pop_front();
  return {adapted(next, request.sequence), true};
}

std::size_t Script::left() const {
  std::size_t count = 0;
  for (const auto& [code, recorded] : exchanges_) count += recorded.size();
  return count;
}

}  // namespace zentaro::tools
