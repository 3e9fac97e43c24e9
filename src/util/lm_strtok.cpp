// The tokenizer and what it remembers.
#include "util/lm_strtok.h"

#include <algorithm>

#include "automation/automation_error.h"
#include "platform/per_thread.h"

namespace zentaro {
namespace {

struct Splitting {
  std::u16string text;  // empty before the first call only
  std::size_t next = 0;
};

}  // namespace

std::u16string lmstrtok(std::u16string_view text, std::u16string_view delimiters) {
  auto& splitting = perThread<Splitting>();
  if (!text.empty()) {
    splitting.text = text;
    splitting.next = 0;
  }
  if (splitting.text.empty()) throw AutomationError(ErrorNumber::InvalidArgument);

  const std::size_t length = splitting.text.size();
  const std::size_t begin = std::min(splitting.text.find_first_not_of(delimiters, splitting.next), length);
  const std::size_t end = std::min(splitting.text.find_first_of(delimiters, begin), length);
  splitting.next = std::min(end + 1, length);  // the delimiter that ends a token goes with it
  return splitting.text.substr(begin, end - begin);
}

}  // namespace zentaro
