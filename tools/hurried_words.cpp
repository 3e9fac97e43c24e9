// What is replaced by what.
#include "tools/hurried_words.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "text/ascii.h"

namespace zentaro::tools {

namespace {

using Pair = std::pair<std::string_view, std::string_view>;

constexpr auto subcommands = std::to_array<Pair>({{"estado", "status"},
                                                  {"venta", "sale"},
                                                  {"vender", "sale"},
                                                  {"impresora", "printer"},
                                                  {"llamar", "call"},
                                                  {"traza", "trace"},
                                                  {"miembros", "members"},
                                                  {"configuracion", "settings"},
                                                  {"configuración", "settings"},
                                                  {"ayuda", "help"}});
constexpr auto options = std::to_array<Pair>({{"--puerto", "--port"},
                                              {"--dispositivo", "--device"},
                                              {"--espera", "--timeout"},
                                              {"--traza", "--trace"},
                                              {"--idioma", "--lang"},
                                              {"--ayuda", "--help"},
                                              {"--si", "--yes"},
                                              {"--sí", "--yes"}});
// Options that every subcommand with a printer has, and those of them that take a value.
constexpr auto ofThePort =
    std::to_array<std::string_view>({"--port", "--device", "--timeout", "--give-up", "--trace"});
// Subcommands that take no word of their own behind these many; "sale" has its file, "cierre" its kind.
constexpr auto withoutWords = std::to_array<std::pair<std::string_view, std::size_t>>(
    {{"status", 0}, {"doctor", 0}, {"setup", 0}, {"instalar", 0}, {"cierre", 1}, {"sale", 1}});

std::string_view found(const auto& pairs, std::string_view word) {
  for (const auto& [typed, meant] : pairs)
    if (typed == word) return meant;
  return word;
}

std::string withKnownOption(const std::string& word) {
  const std::size_t end = word.find('=');
  return std::string(found(options, word.substr(0, end))) +
         (end == std::string::npos ? "" : word.substr(end));
}

bool isOfThePort(std::string_view word) {
  return word == "--virtual" || std::ranges::any_of(ofThePort, [&](std::string_view option) {
           return word == option || word.starts_with(std::string(option) + "=");
         });
}

bool takesNext(std::string_view word) { return std::ranges::find(ofThePort, word) != ofThePort.end(); }

// "COM1" and "1" as a port, a path below /dev as a device; empty for any other word.
std::vector<std::string> asPort(const std::string& word) {
  const bool isCom = word.size() == 4 && equalIgnoringCase(std::string_view(word).substr(0, 3), "COM");
  const std::string number = isCom ? word.substr(3) : word;
  if (number.size() == 1 && number[0] >= '1' && number[0] <= '8') return {"--port", number};
  if (word.starts_with("/dev/") || word.starts_with("tcp://")) return {"--device", word};
  if (word.starts_with("ttyUSB") || word.starts_with("ttyACM") || word.starts_with("ttyS"))
    return {"--device", "/dev/" + word};
  return {};
}

// Words behind those that the subcommand wants: a port that stands alone gets its option.
void nameThePort(std::vector<std::string>& words, std::size_t subcommand) {
  const auto rule =
      std::ranges::find(withoutWords, words[subcommand], &std::pair<std::string_view, std::size_t>::first);
  if (rule == withoutWords.end()) return;
  std::size_t seen = 0;
  for (std::size_t at = subcommand + 1; at < words.size(); ++at) {
    if (words[at].starts_with("-")) {
      const bool hasOwnValue = words[at].find('=') != std::string::npos;
      constexpr auto others =
          std::to_array<std::string_view>({"--lang", "--id", "--report", "--resolve", "--fault"});
      const bool isOther = std::ranges::find(others, words[at]) != others.end();
      if (!hasOwnValue && (takesNext(words[at]) || isOther)) ++at;
      continue;
    }
    if (seen++ < rule->second) continue;
    const std::vector<std::string> port = asPort(words[at]);
    if (port.empty()) continue;
    words[at] = port[0];
    words.insert(words.begin() + static_cast<std::ptrdiff_t>(at) + 1, port[1]);
    return;
  }
}

}  // namespace

std::vector<std::string> meantWords(std::vector<std::string> words) {
  std::ranges::transform(words, words.begin(), withKnownOption);
  std::vector<std::string> moved;
  std::size_t at = 0;
  while (at < words.size() && words[at].starts_with("-")) {
    const bool isMoved = isOfThePort(words[at]);
    const std::size_t count = takesNext(words[at]) || words[at] == "--lang" ? 2 : 1;
    const auto first = words.begin() + static_cast<std::ptrdiff_t>(at);
    const auto last = first + static_cast<std::ptrdiff_t>(std::min(count, words.size() - at));
    if (isMoved) {
      moved.insert(moved.end(), first, last);
      words.erase(first, last);
    } else {
      at += count;
    }
  }
  if (at >= words.size()) {  // no subcommand
    words.insert(words.end(), moved.begin(), moved.end());
    return words;
  }
  words[at] = std::string(found(subcommands, words[at]));
  words.insert(words.begin() + static_cast<std::ptrdiff_t>(at) + 1, moved.begin(), moved.end());
  nameThePort(words, at);
  return words;
}

}  // namespace zentaro::tools
