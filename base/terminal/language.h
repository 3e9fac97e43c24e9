// The two languages in which the programs speak to people. Each text stands in both, side by side where it is
// used: say("No hay papel.", "There is no paper."). What machines read is in neither.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace zentaro::terminal {

enum class Language { English, Spanish };

/// The language of the program: what chooseLanguage() said last, else what the environment says (ZENTARO_LANG,
/// then LC_ALL, LC_MESSAGES and LANG as usual); English when it says nothing, or another language.
Language language();
void chooseLanguage(Language chosen);

/// The language that a value such as "es", "es_VE.UTF-8" or "C" names; English for all but Spanish.
Language languageNamed(std::string_view name);

/// The text of the program's language, with each "{}" replaced by the next of the values.
std::string say(std::string_view spanish, std::string_view english,
                std::initializer_list<std::string_view> values = {});

}  // namespace zentaro::terminal
