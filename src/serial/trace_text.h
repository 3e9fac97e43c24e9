// The lines of a traffic trace as text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.h"
#include "text/code_page.h"

namespace zentaro {

/// `word`, a blank, and the time: "Send 15-03-2024 14:05:09".
std::u16string stampLine(std::u16string_view word, const LocalTime& time);

/// A hexadecimal dump, sixteen characters a line: their codes in the code page in a column of 48,
/// then the characters with "." for those below the blank. No line for an empty text.
std::vector<std::u16string> dumpLines(std::u16string_view text, const CodePage& codePage);

}  // namespace zentaro
