// The system's random numbers, which std::random_device hands out, and their digits.
#include "base/system/random.h"

#include <random>

namespace zentaro::system {

std::string randomHex(std::size_t bytes) {
  std::random_device dice;
  std::string numbers(bytes, '\0');
  for (char& number : numbers) number = static_cast<char>(dice());
  return hexOf(numbers);
}

std::string hexOf(std::string_view bytes) {
  constexpr char digits[] = "0123456789abcdef";
  std::string text;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    text += digits[value >> 4];
    text += digits[value & 15];
  }
  return text;
}

}  // namespace zentaro::system
