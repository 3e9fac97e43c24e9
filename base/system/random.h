// Numbers that nobody can guess.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zentaro::system {

/// So many bytes as hexadecimal digits, from the system. Raises std::runtime_error when it gives none.
std::string randomHex(std::size_t bytes);

/// Two hexadecimal digits for each byte.
std::string hexOf(std::string_view bytes);

}  // namespace zentaro::system
