// The command table.
#include "virtual-printer/device/commands.h"

#include <algorithm>
#include <array>

namespace virtual_printer {
namespace {

constexpr auto table = std::to_array<CommandEntry>({
    {statusCode, "status", Paper::NotNeeded, status},
    {0x39, "closing", Paper::NotNeeded, closing},  // an X that is only read needs no paper
    {0x3A, "memory", Paper::Needed, memoryReport},
    {0x40, "open", Paper::Needed, openDocument},
    {0x41, "text", Paper::Needed, extraLine},
    {0x42, "item", Paper::Needed, itemLine},
    {0x43, "subtotal", Paper::Needed, subtotal},
    {0x44, "payment", Paper::Needed, payment},
    {0x45, "close", Paper::Needed, closeDocument},
    {0x48, "open-dnf", Paper::Needed, openNonFiscal},
    {0x49, "text-dnf", Paper::Needed, nonFiscalLine},
    {0x4A, "close-dnf", Paper::Needed, closeNonFiscal},
    {0x4B, "cut", Paper::Needed, cutPaper},
    {0x50, "feed", Paper::Needed, feedPaper},
    {0x58, "set-clock", Paper::NotNeeded, setClock},
    {0x59, "clock", Paper::NotNeeded, readClock},
    {0x5D, "header", Paper::NotNeeded, setHeader},
    {0x5E, "footer", Paper::NotNeeded, setFooter},
    {0x7B, "drawer-1", Paper::NotNeeded, openDrawer},
    {0x7C, "drawer-2", Paper::NotNeeded, openDrawer},
    {0x80, "serial", Paper::NotNeeded, readSerial},
    {0xA0, "slip-on", Paper::NotNeeded, slipOn},
    {0xA1, "slip-off", Paper::NotNeeded, slipOff},
    {0xAA, "cheque", Paper::NotNeeded, chequeFace},
    {0xAB, "endorse", Paper::NotNeeded, chequeBack},
});

}  // namespace

std::span<const CommandEntry> commandTable() { return table; }

const CommandEntry* findCommand(std::uint8_t code) {
  const auto* found = std::ranges::find(table, code, &CommandEntry::code);
  return found == table.end() ? nullptr : found;
}

const CommandEntry* findCommand(std::string_view name) {
  const auto* found = std::ranges::find(table, name, &CommandEntry::name);
  return found == table.end() ? nullptr : found;
}

}  // namespace virtual_printer
