// Texts of an exact length.
#pragma once

#include <cstdint>
#include <string>

namespace zentaro::lmStringLib {

/// Cut, or filled with blanks behind, to `length` characters. Raises 5 (invalid argument) for a
/// negative length.
std::u16string FixLen(std::u16string text, std::int32_t length);

}  // namespace zentaro::lmStringLib
