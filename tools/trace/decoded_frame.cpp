// Cutting a frame out of the bytes around it.
#include "tools/trace/decoded_frame.h"

#include <charconv>

#include "virtual-printer/wire/receiver.h"

namespace zentaro::tools {

namespace {

using virtual_printer::checksumDigits;

bool isGood(std::string_view digits, std::string_view summed, Direction direction) {
  unsigned value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  const unsigned sum = virtual_printer::byteSum(summed);
  return error == std::errc() && end == digits.data() + digits.size() && digits.size() >= checksumDigits &&
         value == (direction == Direction::Answer ? sum & 0xFFFFU : sum);
}

}  // namespace

FrameBounds frameBounds(std::string_view bytes) {
  const std::size_t stx = bytes.find(virtual_printer::stx);
  if (stx == std::string_view::npos) return {};
  const std::size_t etx = bytes.find(virtual_printer::etx, stx);
  const bool hasCode = etx != std::string_view::npos && etx >= stx + 3;
  return {stx, hasCode ? etx : std::string_view::npos};
}

DecodedFrame decodeFrame(std::string_view bytes, Direction direction) {
  DecodedFrame frame;
  if (bytes.find_first_not_of(virtual_printer::waitByte) == std::string_view::npos) return frame;
  if (bytes == virtual_printer::resetBytes) {
    frame.form = DecodedFrame::Form::Reset;
    return frame;
  }
  const FrameBounds bounds = frameBounds(bytes);
  if (!bounds.areFound()) {
    frame.form = DecodedFrame::Form::Junk;
    return frame;
  }
  frame.form = DecodedFrame::Form::Frame;
  frame.content = virtual_printer::decodeCommand(bytes.substr(bounds.stx + 1, bounds.etx - bounds.stx - 1));
  frame.checksum =
      bytes.substr(bounds.etx + 1, direction == Direction::Answer ? checksumDigits : std::string_view::npos);
  frame.isChecksumGood =
      isGood(frame.checksum, bytes.substr(bounds.stx, bounds.etx - bounds.stx + 1), direction);
  return frame;
}

}  // namespace zentaro::tools
