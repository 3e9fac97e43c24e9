// Command lines in the language of the program: --lang, and what the parser itself says.
#pragma once

#include <CLI/CLI.hpp>

namespace zentaro::terminal {

/// Chooses the language that "--lang es" or "--lang=es" among the words asks for. To be called before anything
/// is said, descriptions of options included; what is no language is left to the parser to refuse.
void chooseLanguage(int count, const char* const* words);

/// Adds --lang and --help, and lets the parser speak the program's language: labels, its own messages. To be
/// called before options and subcommands are added, which follow it.
void speakTheLanguage(CLI::App& app);

/// What is told of an error of the parser, in the program's language, and where all options are explained; a
/// complaint that is not known as it came.
std::string explain(const CLI::App* app, const CLI::Error& error);

/// Checks of a value; what they say is in the program's language, and nothing of it stands in the help.
CLI::Validator wholeNumber(int least, int most);
CLI::Validator oneOf(std::initializer_list<std::string> values);
/// A script's variable that is not set must not count as an option that was not given.
CLI::Validator notEmpty();

}  // namespace zentaro::terminal
