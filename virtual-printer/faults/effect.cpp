// The effects, in the order of the enumeration.
#include "virtual-printer/faults/effect.h"

#include <algorithm>
#include <array>

namespace virtual_printer {
namespace {

constexpr auto effects = std::to_array<EffectEntry>({
    {Effect::LoseAnswer, "lose-answer", ValueKind::None, "", false,
     "el comando surte efecto, su respuesta se pierde", "the command takes effect, its answer is lost"},
    {Effect::LoseCommand, "lose-command", ValueKind::None, "", false, "el comando se pierde, no pasa nada",
     "the command is lost, nothing happens"},
    {Effect::Delay, "delay", ValueKind::Seconds, "5", false, "silencio por N segundos, luego la respuesta",
     "silence for N seconds, then the answer"},
    {Effect::Wait, "wait", ValueKind::Seconds, "5", false,
     "bytes de espera por N segundos, luego la respuesta", "wait bytes for N seconds, then the answer"},
    {Effect::BadChecksum, "bad-checksum", ValueKind::None, "", false, "la suma de la respuesta está mal",
     "the answer's checksum is wrong"},
    {Effect::BadSequence, "bad-sequence", ValueKind::None, "", false,
     "la respuesta lleva otro número de secuencia", "the answer carries another sequence number"},
    {Effect::RepeatAnswer, "repeat-answer", ValueKind::None, "", false,
     "se repite en su lugar la respuesta anterior", "the previous answer is sent again instead"},
    {Effect::Noise, "noise", ValueKind::Place, "before", false,
     "basura antes de la respuesta, o dentro de ella", "junk before the answer, or inside it"},
    {Effect::Pieces, "pieces", ValueKind::Bytes, "1", false, "la respuesta llega en pedazos de N bytes",
     "the answer comes in pieces of N bytes"},
    {Effect::Truncate, "truncate", ValueKind::Bytes, "8", false, "la respuesta termina a los N bytes",
     "the answer ends after N bytes"},
    {Effect::HangUp, "hang-up", ValueKind::Seconds, "1", false,
     "se pierde el comando, y la línea por N segundos",
     "the command is lost, the line is gone for N seconds"},
    {Effect::PowerCut, "power-cut", ValueKind::Seconds, "2", false,
     "se pierde el comando; sin corriente N segundos", "the command is lost; no power for N seconds"},
    {Effect::PaperNearEnd, "paper-near-end", ValueKind::None, "", true,
     "un bit de estado; se sigue imprimiendo", "a status bit; printing goes on"},
    {Effect::PaperOut, "paper-out", ValueKind::None, "", true,
     "se rechaza lo que imprime; el documento espera", "what prints is refused; the document waits"},
    {Effect::CoverOpen, "cover-open", ValueKind::None, "", true,
     "se rechaza lo que imprime; el documento espera", "what prints is refused; the document waits"},
    {Effect::MemoryNearFull, "memory-near-full", ValueKind::None, "", true, "un bit de estado; todo sigue",
     "a status bit; everything goes on"},
    {Effect::MemoryFull, "memory-full", ValueKind::None, "", true, "ni documentos fiscales ni cierre Z",
     "no fiscal document and no Z closing"},
    {Effect::DayChange, "day-change", ValueKind::None, "", true, "ningún documento fiscal hasta un cierre Z",
     "no fiscal document until a Z closing"},
});

}  // namespace

std::span<const EffectEntry> effectTable() { return effects; }

const EffectEntry& entryOf(Effect effect) { return effects[static_cast<std::size_t>(effect)]; }

const EffectEntry* findEffect(std::string_view name) {
  const auto* found = std::ranges::find(effects, name, &EffectEntry::name);
  return found == effects.end() ? nullptr : found;
}

}  // namespace virtual_printer
