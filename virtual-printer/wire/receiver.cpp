// Search for commands and for the reset sequence, byte by byte.
#include "virtual-printer/wire/receiver.h"

namespace virtual_printer {
namespace {

// No command is longer than this; more bytes without an end are noise.
constexpr std::size_t longestFrame = 40'000;
constexpr std::size_t shortestBody = 2;  // sequence and code

}  // namespace

std::vector<Received> Receiver::feed(std::string_view bytes) {
  std::vector<Received> out;
  for (const char byte : bytes) take(byte, out);
  if (!pending_.empty() && pending_[0] != stx && resetProgress_ == 0) ignore(pending_.size(), out);
  return out;
}

void Receiver::take(char byte, std::vector<Received>& out) {
  pending_ += byte;
  resetProgress_ = byte == resetBytes[resetProgress_] ? resetProgress_ + 1 : (byte == resetBytes[0] ? 1 : 0);
  if (resetProgress_ == resetBytes.size()) {
    ignore(pending_.size() - resetBytes.size(), out);
    pending_.clear();
    resetProgress_ = 0;
    out.emplace_back(ResetSequence{});
    return;
  }
  if (byte == stx && pending_.find(stx) == pending_.size() - 1) ignore(pending_.size() - 1, out);
  if (pending_.size() > longestFrame) ignore(pending_.size(), out);
  const std::size_t end = pending_.find(etx);
  if (end != std::string::npos && pending_[0] == stx) frameAt(end, out);
}

// A command may follow the stump of another one, so every STX before the ETX is tried as its beginning.
void Receiver::frameAt(std::size_t end, std::vector<Received>& out) {
  const std::string_view all = pending_;
  const std::string_view digits = all.substr(end + 1);
  bool mayStillMatch = false;
  unsigned sum = byteSum(all.substr(0, end + 1));
  for (std::size_t begin = 0; begin + shortestBody < end; sum -= static_cast<unsigned char>(all[begin++])) {
    if (all[begin] != stx) continue;
    const std::string expected = hexadecimal(sum, 4);
    if (digits == expected) {
      if (begin > 0) out.emplace_back(Ignored{std::string{all.substr(0, begin)}});
      Command command = decodeCommand(all.substr(begin + 1, end - begin - 1));
      command.frame = all.substr(begin);
      out.emplace_back(std::move(command));
      pending_.clear();
      return;
    }
    mayStillMatch = mayStillMatch || expected.starts_with(digits);
  }
  if (mayStillMatch) return;
  const std::size_t next = all.find(stx, end);
  ignore(next == std::string_view::npos ? pending_.size() : next, out);
}

void Receiver::ignore(std::size_t count, std::vector<Received>& out) {
  if (count == 0) return;
  out.emplace_back(Ignored{pending_.substr(0, count)});
  pending_.erase(0, count);
}

}  // namespace virtual_printer
