// The command table.
#include "device/commands.h"

#include <algorithm>
#include <array>

namespace printer {
namespace {

constexpr auto table = std::to_array<CommandEntry>({
    {statusCode, "status", Paper::notNeeded, status},
    {0x39, "closing", Paper::notNeeded, closing},  // an X that is only read needs no paper
    {0x3A, "memory", Paper::needed, memoryReport},
    {0x40, "open", Paper::needed, openDocument},
    {0x41, "text", Paper::needed, extraLine},
    {0x42, "item", Paper::needed, itemLine},
    {0x43, "subtotal", Paper::needed, subtotal},
    {0x44, "payment", Paper::needed, payment},
    {0x45, "close", Paper::needed, closeDocument},
    {0x48, "open-dnf", Paper::needed, openNonFiscal},
    {0x49, "text-dnf", Paper::needed, nonFiscalLine},
    {0x4A, "close-dnf", Paper::needed, closeNonFiscal},
    {0x4B, "cut", Paper::needed, cutPaper},
    {0x50, "feed", Paper::needed, feedPaper},
    {0x58, "set-clock", Paper::notNeeded, setClock},
    {0x59, "clock", Paper::notNeeded, readClock},
    {0x5D, "header", Paper::notNeeded, setHeader},
    {0x5E, "footer", Paper::notNeeded, setFooter},
    {0x7B, "drawer-1", Paper::notNeeded, openDrawer},
    {0x7C, "drawer-2", Paper::notNeeded, openDrawer},
    {0x80, "serial", Paper::notNeeded, readSerial},
    {0xA0, "slip-on", Paper::notNeeded, slipOn},
    {0xA1, "slip-off", Paper::notNeeded, slipOff},
    {0xAA, "cheque", Paper::notNeeded, chequeFace},
    {0xAB, "endorse", Paper::notNeeded, chequeBack},
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
