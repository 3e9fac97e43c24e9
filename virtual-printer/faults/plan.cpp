// Reading of plans word by word, and writing them back.
#include "virtual-printer/faults/plan.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <stdexcept>

#include "base/terminal/language.h"
#include "virtual-printer/device/commands.h"

namespace virtual_printer {
namespace {

using zentaro::terminal::say;

constexpr int mostSeconds = 3600;
constexpr int mostCount = 1'000'000;

std::vector<std::string> split(std::string_view text, std::string_view separators) {
  std::vector<std::string> parts;
  for (std::size_t at = 0; at <= text.size();) {
    const std::size_t end = std::min(text.find_first_of(separators, at), text.size());
    parts.emplace_back(text.substr(at, end - at));
    at = end + 1;
  }
  return parts;
}

std::vector<std::string> wordsOf(std::string_view text) {
  std::vector<std::string> words = split(text, " \t\r\n");
  std::erase(words, std::string{});
  return words;
}

// Reads one fault; every error names the fault and the word.
class FaultReader {
 public:
  explicit FaultReader(const std::string& text) : text_{text}, words_{wordsOf(text)} {}

  Fault read() {
    readEffect();
    while (at_ < words_.size()) readClause(words_[at_++]);
    return fault_;
  }

 private:
  [[noreturn]] void fail(std::string_view what) const {
    throw std::runtime_error(say("plan de fallas, \"{}\": {}", "fault plan, \"{}\": {}", {text_, what}));
  }

  std::string next(const std::string& after, std::string_view expected) {
    if (at_ == words_.size())
      fail(say("detrás de \"{}\" se espera {}", "after \"{}\" {} is expected", {after, expected}));
    return words_[at_++];
  }

  int count(const std::string& word, int least, int most) const {
    int value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc{} || end != word.data() + word.size() || value < least || value > most)
      fail(say("\"{}\" no es un número entero de {} a {}", "\"{}\" is no whole number from {} to {}",
               {word, std::to_string(least), std::to_string(most)}));
    return value;
  }

  void readEffect() {
    if (words_.empty())
      fail(say("se espera un efecto; --help los muestra", "an effect is expected; --help lists them"));
    const std::vector<std::string> parts = split(words_[at_++], "=");
    const EffectEntry* entry = findEffect(parts[0]);
    if (entry == nullptr)
      fail(say("no existe el efecto \"{}\"; --help los muestra",
               "there is no effect \"{}\"; --help lists them", {parts[0]}));
    if (parts.size() > 2)
      fail(say("se espera un solo valor detrás de \"{}\"", "one value is expected after \"{}\"", {parts[0]}));
    fault_.effect = entry->effect;
    if (parts.size() == 2 && entry->value == ValueKind::None)
      fail(say("\"{}\" no lleva valor", "\"{}\" takes no value", {entry->name}));
    readValue(*entry, parts.size() == 2 ? parts[1] : entry->standard);
    if (!entry->isCondition) fault_.times = 1;
  }

  void readValue(const EffectEntry& entry, const std::string& word) {
    switch (entry.value) {
      case ValueKind::None: return;
      case ValueKind::Bytes: fault_.bytes = static_cast<std::size_t>(count(word, 1, mostCount)); return;
      case ValueKind::Seconds: fault_.time = seconds(word); return;
      case ValueKind::Place: break;
    }
    if (word != "before" && word != "inside")
      fail(say("\"{}\" no es ni before ni inside", "\"{}\" is neither before nor inside", {word}));
    fault_.place = word == "inside" ? Place::Inside : Place::Before;
  }

  std::chrono::milliseconds seconds(const std::string& word) const {
    double given = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), given);
    if (error != std::errc{} || end != word.data() + word.size() || !(given >= 0 && given <= mostSeconds))
      fail(say("\"{}\" no es un número de segundos de 0 a {}", "\"{}\" is no number of seconds from 0 to {}",
               {word, std::to_string(mostSeconds)}));
    return std::chrono::milliseconds{std::lround(given * 1000)};
  }

  void readClause(const std::string& word) {
    if (word == "on") return readCommands(next(word, say("un comando", "a command")));
    if (word == "after") {
      fault_.after = count(next(word, say("un número", "a number")), 0, mostCount);
    } else if (word == "chance") {
      std::string percent = next(word, say("un porcentaje", "a percentage"));
      if (percent.ends_with('%')) percent.pop_back();
      fault_.chance = count(percent, 1, 100);
    } else if (word == "once") {
      fault_.times = 1;
    } else if (word == "times") {
      fault_.times = count(next(word, say("un número", "a number")), 1, mostCount);
    } else if (word == "always") {
      fault_.times.reset();
    } else {
      fail(say("\"{}\" no es ninguno de: on, after, chance, once, times, always",
               "\"{}\" is none of: on, after, chance, once, times, always", {word}));
    }
  }

  void readCommands(const std::string& list) {
    for (const std::string& name : split(list, ",")) {
      unsigned code = 0;
      const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), code, 16);
      const bool isCode = error == std::errc{} && end == name.data() + name.size() && name.size() == 2;
      const CommandEntry* entry = isCode ? findCommand(static_cast<std::uint8_t>(code)) : findCommand(name);
      if (entry == nullptr)
        fail(say("no existe el comando \"{}\"; --help los muestra",
                 "there is no command \"{}\"; --help lists them", {name}));
      fault_.commands.push_back(entry->code);
    }
  }

  std::string text_;
  std::vector<std::string> words_;
  std::size_t at_ = 0;
  Fault fault_;
};

std::string valueText(const Fault& fault) {
  switch (entryOf(fault.effect).value) {
    case ValueKind::None: return {};
    case ValueKind::Bytes: return "=" + std::to_string(fault.bytes);
    case ValueKind::Place: return fault.place == Place::Before ? "=before" : "=inside";
    case ValueKind::Seconds: break;
  }
  const auto value = fault.time.count();
  std::string text = "=" + std::to_string(value / 1000);
  if (value % 1000 == 0) return text;
  text += "." + std::to_string(1000 + value % 1000).substr(1);
  return text.substr(0, text.find_last_not_of('0') + 1);
}

}  // namespace

std::vector<Fault> parsePlan(std::string_view text) {
  std::vector<Fault> faults;
  for (const std::string& part : split(text, ";")) faults.push_back(FaultReader{part}.read());
  return faults;
}

std::string describe(const Fault& fault) {
  std::string text = entryOf(fault.effect).name + valueText(fault);
  for (std::size_t at = 0; at < fault.commands.size(); ++at)
    text += std::string{at == 0 ? " on " : ","} + findCommand(fault.commands[at])->name;
  if (fault.after > 0) text += " after " + std::to_string(fault.after);
  if (fault.chance < 100) text += " chance " + std::to_string(fault.chance) + "%";
  if (!fault.times) return text + " always";
  return text + (*fault.times == 1 ? " once" : " times " + std::to_string(*fault.times));
}

}  // namespace virtual_printer
