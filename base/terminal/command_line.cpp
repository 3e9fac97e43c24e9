// The parser's messages, by their wording.
#include "base/terminal/command_line.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string_view>

#include "base/terminal/harmless.h"
#include "base/terminal/help.h"
#include "base/terminal/language.h"

namespace zentaro::terminal {

namespace {

struct Wording {
  std::string_view english, spanish;  // with gaps {}, in the same order
};

constexpr auto wordings = std::to_array<Wording>({
    {"A subcommand is required", "falta una orden"},
    {"{} is required", "falta {}"},
    {"The following argument was not expected: {}", "sobra este argumento: {}"},
    {"The following arguments were not expected: {}", "sobran estos argumentos: {}"},
    {"{} excludes {}", "{} excluye {}"},
    {"{} requires {}", "{} necesita {}"},
    {"{}: 1 required {} missing", "{}: falta {}"},
    {"{}: {} required {} missing", "{}: faltan {} {}"},
    {"{}: At Most 1 required but received {}", "{} se da una sola vez, y se dio {} veces"},
    {"The value {} is not an allowed value for {}", "{} no es un valor de {}"},
    {"Could not convert: {} = {}", "{}: no se entiende el valor {}"},
    {"{}: too many inputs for a flag", "{}: no lleva tantos valores"},
    {"{} was given a disallowed flag override", "{} no lleva valor"},
});

constexpr std::string_view placeholder = "{}";

/// What stands in the gaps of the pattern; nothing when the text is another one.
std::optional<std::vector<std::string>> valuesIn(std::string_view text, std::string_view pattern) {
  std::vector<std::string> values;
  for (std::size_t at = pattern.find(placeholder); at != std::string_view::npos;
       at = pattern.find(placeholder)) {
    if (!text.starts_with(pattern.substr(0, at))) return std::nullopt;
    text.remove_prefix(at);
    pattern.remove_prefix(at + placeholder.size());
    const std::string_view behind = pattern.substr(0, pattern.find(placeholder));
    const std::size_t end = behind.empty() ? text.size() : text.find(behind);
    if (end == std::string_view::npos) return std::nullopt;
    values.emplace_back(text.substr(0, end));
    text.remove_prefix(end);
  }
  return text == pattern ? std::optional(values) : std::nullopt;
}

std::string filled(std::string_view pattern, const std::vector<std::string>& values) {
  std::string text{pattern};
  std::size_t at = 0;
  for (const std::string& value : values) {
    at = text.find(placeholder, at);
    text.replace(at, placeholder.size(), value);
    at += value.size();
  }
  return text;
}

std::string complaintOf(const CLI::Error& error) {
  std::string text = error.what();
  if (language() == Language::English) return text;
  for (const Wording& wording : wordings)
    if (const auto values = valuesIn(text, wording.english)) return filled(wording.spanish, *values);
  return text;
}

void useSpanishLabels(CLI::App& app) {
  app.option_defaults()->group("Opciones");
  const auto formatter = app.get_formatter();
  for (const auto& [english, spanish] :
       std::initializer_list<std::pair<const char*, const char*>>{{"Usage", "Uso"},
                                                                  {"OPTIONS", "OPCIONES"},
                                                                  {"SUBCOMMAND", "ORDEN"},
                                                                  {"SUBCOMMANDS", "ÓRDENES"},
                                                                  {"Positionals", "Argumentos"}})
    formatter->label(english, spanish);
}

}  // namespace

void chooseLanguage(int count, const char* const* words) {
  constexpr std::string_view option = "--lang";
  for (int at = 1; at < count; ++at) {
    const std::string_view word = words[at];
    std::string_view name;
    if (word == option && at + 1 < count) name = words[at + 1];
    if (word.starts_with("--lang=")) name = word.substr(option.size() + 1);
    if (name == "es" || name == "en") chooseLanguage(languageNamed(name));
  }
}

void speakTheLanguage(CLI::App& app) {
  app.formatter(std::make_shared<HelpLayout>());
  if (language() == Language::Spanish) useSpanishLabels(app);
  app.failure_message(explain);
  app.set_help_flag("-h,--help", say("Muestra esta ayuda", "Show this help"));
  app.add_option_function<std::string>(
         "--lang", [](const std::string& name) { chooseLanguage(languageNamed(name)); },
         say("Idioma de los textos: es o en", "Language of the texts: es or en"))
      ->type_name("es|en")
      ->check(oneOf({"es", "en"}));
}

std::string explain(const CLI::App* app, const CLI::Error& error) {
  const CLI::App* program = app;
  while (program->get_parent() != nullptr) program = program->get_parent();
  std::string text = program->get_name() + ": " + harmless(complaintOf(error)) + "\n";
  if (app->get_help_ptr() != nullptr)
    text += say("Con --help se ven todas las opciones.\n", "Run with --help for more information.\n");
  return text;
}

CLI::Validator wholeNumber(int least, int most) {
  return {[=](const std::string& given) {
            int number = 0;
            const auto [end, error] = std::from_chars(given.data(), given.data() + given.size(), number);
            const bool isWhole = error == std::errc() && end == given.data() + given.size();
            return isWhole && number >= least && number <= most
                       ? std::string()
                       : say("se espera un número entero de {} a {}",
                             "a whole number from {} to {} is expected",
                             {std::to_string(least), std::to_string(most)});
          },
          ""};
}

CLI::Validator oneOf(std::initializer_list<std::string> values) {
  return {[values = std::vector<std::string>(values)](const std::string& given) {
            return std::ranges::find(values, given) != values.end()
                       ? std::string()
                       : say("se espera {}", "{} is expected",
                             {CLI::detail::join(values, say(" o ", " or "))});
          },
          ""};
}

CLI::Validator notEmpty() {
  return {[](const std::string& given) {
            return std::string(given.empty() ? say("el valor está vacío", "the value is empty") : "");
          },
          ""};
}

}  // namespace zentaro::terminal
