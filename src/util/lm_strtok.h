// A tokenizer that remembers its text between calls, one text a thread.
#pragma once

#include <string>
#include <string_view>

namespace zentaro {

/// The next token of `text`, or of the text given last when `text` is empty; empty when that one is
/// used up. A run of delimiters separates as one does, so no token is ever empty. Raises 5 (invalid
/// argument) for an empty text before any other.
std::u16string lmstrtok(std::u16string_view text, std::u16string_view delimiters);

}  // namespace zentaro
