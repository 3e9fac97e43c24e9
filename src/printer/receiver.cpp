// Collecting an answer.
#include "printer/receiver.h"

#include <algorithm>

#include "printer/frame.h"

namespace zentaro {

void Receiver::feed(std::u16string_view chunk) {
  if (!started()) chunk.remove_prefix(std::min(chunk.find_first_not_of(waitByte), chunk.size()));
  const std::size_t previous = text_.size();
  text_ += chunk;
  if (!hasEtx()) etx_ = text_.find(ETX, previous);
}

}  // namespace zentaro
