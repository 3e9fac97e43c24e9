// Every search begins where the last one ended, so a long answer costs its length once.
#include "printer/receiver.h"

#include <algorithm>
#include <utility>

#include "printer/frame.h"

namespace zentaro {

void Receiver::feed(std::u16string chunk) {
  const std::size_t previous = text_.size();
  if (started()) {
    text_ += chunk;
  } else {
    text_ = std::move(chunk.erase(0, chunk.find_first_not_of(waitByte)));
  }
  if (stx_ == std::u16string::npos) {
    stx_ = text_.find(STX, previous);
    if (stx_ != std::u16string::npos) etx_ = std::u16string::npos;
  }
  const std::size_t start = stx_ == std::u16string::npos ? 0 : stx_;
  if (!hasEtx()) etx_ = text_.find(ETX, std::max(previous, start));
}

}  // namespace zentaro
