// The tables of a type library file, as far as slots stand in them.
#include "com/slot_offsets.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zentaro::com {
namespace {

// Places in the file's header, in the description of a type, and in the record of a function.
constexpr std::size_t flagsAt = 0x14, typeCountAt = 0x20, headerSize = 0x54;
constexpr std::uint32_t hasHelpFile = 0x100;  // the header is one word longer
constexpr std::size_t typeSize = 100, functionsAt = 0x04, functionCountAt = 0x18, tableSizeAt = 0x4E;
constexpr std::size_t slotOffsetAt = 0x0C;
constexpr std::int16_t baseSize = 7 * 4, wrongBaseSize = 7 * 8;

template <class T>
T read(const std::string& file, std::size_t place) {
  T value{};
  std::memcpy(&value, file.substr(place, sizeof value).data(), sizeof value);
  return value;
}

void lower(std::string& file, std::size_t place) {
  const auto value = static_cast<std::int16_t>(read<std::int16_t>(file, place) - (wrongBaseSize - baseSize));
  std::memcpy(file.data() + place, &value, sizeof value);
}

}  // namespace

void correctSlotOffsets(std::string& library) {
  const auto types = read<std::uint32_t>(library, typeCountAt);
  const std::size_t longer = (read<std::uint32_t>(library, flagsAt) & hasHelpFile) != 0 ? 4 : 0;
  // Behind the header stands a word for each type, then the place of the descriptions.
  std::size_t type = read<std::uint32_t>(library, headerSize + longer + std::size_t{4} * types);
  for (std::uint32_t index = 0; index < types; ++index, type += typeSize) {
    const auto count = read<std::uint16_t>(library, type + functionCountAt);
    // The records stand one behind the other behind their total size, each with its own size first.
    std::size_t record = read<std::uint32_t>(library, type + functionsAt) + sizeof(std::uint32_t);
    if (count == 0 || read<std::int16_t>(library, record + slotOffsetAt) != wrongBaseSize) continue;
    lower(library, type + tableSizeAt);
    for (std::uint16_t function = 0; function < count; ++function) {
      lower(library, record + slotOffsetAt);
      record += read<std::uint16_t>(library, record);
    }
  }
}

}  // namespace zentaro::com
