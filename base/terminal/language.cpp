// Choosing between two texts.
#include "base/terminal/language.h"

#include <cstdlib>

#include "base/terminal/console.h"

namespace zentaro::terminal {

namespace {

// As gettext does: the first variable that is set and not empty decides.
Language fromEnvironment() {
  for (const char* variable : {"ZENTARO_LANG", "LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return languageNamed(value);
  }
  return languageNamed(accountLanguage());
}

Language& chosenLanguage() {
  static Language chosen = fromEnvironment();
  return chosen;
}

}  // namespace

Language language() { return chosenLanguage(); }

void chooseLanguage(Language chosen) { chosenLanguage() = chosen; }

Language languageNamed(std::string_view name) {
  const bool isSpanish = name.starts_with("es") && (name.size() == 2 || name[2] == '_' || name[2] == '.' ||
                                                    name[2] == '-' || name[2] == '@');
  return isSpanish ? Language::Spanish : Language::English;
}

std::string say(std::string_view spanish, std::string_view english,
                std::initializer_list<std::string_view> values) {
  std::string_view rest = language() == Language::Spanish ? spanish : english;
  std::string filled;
  for (const std::string_view value : values) {
    const std::size_t gap = rest.find("{}");
    if (gap == std::string_view::npos) break;
    filled.append(rest.substr(0, gap)).append(value);
    rest.remove_prefix(gap + 2);
  }
  return filled.append(rest);
}

}  // namespace zentaro::terminal
