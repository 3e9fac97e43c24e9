// Reads the settings text of a line, one "name=value" after the other.
#include "platform/line_settings.h"

#include <charconv>
#include <optional>
#include <type_traits>

#include "text/ascii.h"
#include "text/trimming.h"

namespace zentaro {
namespace {

std::optional<std::uint32_t> numberBetween(std::uint32_t low, std::uint32_t high, std::string_view text) {
  std::uint32_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc{} || stop != end || number < low || number > high) return std::nullopt;
  return number;
}

template <auto member, std::uint32_t low, std::uint32_t high>
bool setNumber(std::string_view value, LineSettings& settings) {
  const auto number = numberBetween(low, high, value);
  if (number) settings.*member = static_cast<std::remove_reference_t<decltype(settings.*member)>>(*number);
  return number.has_value();
}

bool setParity(std::string_view value, LineSettings& settings) {
  constexpr std::string_view letters = "noems", written = "NOEMS";
  const auto index = value.size() == 1 ? letters.find(asciiLower(value.front())) : letters.npos;
  if (index == letters.npos) return false;
  settings.parity = written[index];
  return true;
}

struct Setting {
  std::string_view name;
  bool (*set)(std::string_view value, LineSettings& settings);
};
constexpr Setting known[] = {{"baud", setNumber<&LineSettings::baudRate, 1, 4'000'000>},
                             {"parity", setParity},
                             {"data", setNumber<&LineSettings::dataBits, 5, 8>},
                             {"stop", setNumber<&LineSettings::stopBits, 1, 2>}};

bool apply(std::string_view part, LineSettings& settings) {
  const auto equals = part.find('=');
  if (equals == part.npos) return false;
  for (const Setting& setting : known) {
    if (equalIgnoringCase(part.substr(0, equals), setting.name)) {
      return setting.set(part.substr(equals + 1), settings);
    }
  }
  return false;
}

}  // namespace

bool parseLineSettings(std::string_view text, LineSettings& settings) {
  LineSettings changed = settings;
  changed.flowControl = false;
  for (text = trimmed(text); !text.empty(); text = trimmed(text)) {
    const std::string_view part = text.substr(0, text.find_first_of(" \t"));
    if (!apply(part, changed)) return false;
    text.remove_prefix(part.size());
  }
  settings = changed;
  return true;
}

}  // namespace zentaro
