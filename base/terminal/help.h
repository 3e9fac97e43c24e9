// The help of a command as wide as the screen.
#pragma once

#include <CLI/CLI.hpp>

namespace zentaro::terminal {

/// Options, arguments and subcommands with their descriptions in a column of their own; every text is broken at
/// the width of the screen. What excludes or needs what is left to the complaint about it.
class HelpLayout : public CLI::Formatter {
 public:
  std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override;
  std::string make_description(const CLI::App* app) const override;
  std::string make_footer(const CLI::App* app) const override;
  std::string make_option(const CLI::Option* option, bool isPositional) const override;
  std::string make_subcommand(const CLI::App* command) const override;
};

}  // namespace zentaro::terminal
