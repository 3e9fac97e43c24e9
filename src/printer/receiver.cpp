// Collecting an answer.
#include "printer/receiver.h"

#include <algorithm>

#include "printer/frame.h"

namespace zentaro {

void Receiver::feed(std::u16string_view chunk) {
  if (!started()) chunk.remove_prefix(std::min(chunk.find_first_not_of(waitByte), chunk.size()));
  const std::size_t previous = text_.size();
  text_ += chunk;
  if (stx_ == std::u16string::npos) {
    stx_ = text_.find(STX, previous);
    if (stx_ != std::u16string::npos) etx_ = std::u16string::npos;
  }
  const std::size_t start = stx_ == std::u16string::npos ? 0 : stx_;
  if (!hasEtx()) etx_ = text_.find(ETX, std::max(previous, start));
}

}  // namespace zentaro
