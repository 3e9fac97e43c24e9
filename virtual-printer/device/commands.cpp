// The command table.
#include "device/commands.h"

#include <algorithm>
#include <array>

namespace printer {
namespace {

constexpr auto table = std::to_array<CommandEntry>({
    {0x40, "open", Paper::needed, openDocument},
    {0x41, "text", Paper::needed, extraLine},
    {0x42, "item", Paper::needed, itemLine},
    {0x43, "subtotal", Paper::needed, subtotal},
    {0x44, "payment", Paper::needed, payment},
    {0x45, "close", Paper::needed, closeDocument},
    {0x48, "open-dnf", Paper::needed, openNonFiscal},
    {0x49, "text-dnf", Paper::needed, nonFiscalLine},
    {0x4A, "close-dnf", Paper::needed, closeNonFiscal},
    {0x5D, "header", Paper::notNeeded, setHeader},
    {0x5E, "footer", Paper::notNeeded, setFooter},
});

}  // namespace

std::span<const CommandEntry> commandTable() { return table; }

const CommandEntry* findCommand(std::uint8_t code) {
  const auto* found =
      std::find_if(table.begin(), table.end(), [&](const auto& entry) { return entry.code == code; });
  return found == table.end() ? nullptr : found;
}

const CommandEntry* findCommand(std::string_view name) {
  const auto* found =
      std::find_if(table.begin(), table.end(), [&](const auto& entry) { return entry.name == name; });
  return found == table.end() ? nullptr : found;
}

}  // namespace printer
