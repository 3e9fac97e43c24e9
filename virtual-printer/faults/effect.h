// What a fault can do: the table of effects.
#pragma once

#include <span>
#include <string_view>

namespace virtual_printer {

enum class Effect {
  LoseAnswer,
  LoseCommand,
  Delay,
  Wait,
  BadChecksum,
  BadSequence,
  RepeatAnswer,
  Noise,
  Pieces,
  Truncate,
  HangUp,
  PowerCut,
  PaperNearEnd,
  PaperOut,
  CoverOpen,
  MemoryNearFull,
  MemoryFull,
  DayChange,
};

enum class ValueKind { None, Seconds, Bytes, Place };

struct EffectEntry {
  Effect effect;
  const char* name;
  ValueKind value;
  const char* standard;  // the value where a plan gives none, in the words of plans
  bool isCondition;      // lasts on the device, rather than striking one frame
  const char* ayuda;     // the help, in Spanish and in English
  const char* help;
};

std::span<const EffectEntry> effectTable();
const EffectEntry& entryOf(Effect effect);
const EffectEntry* findEffect(std::string_view name);

}  // namespace virtual_printer
