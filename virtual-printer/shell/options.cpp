// The command line, read with CLI11.
#include "shell/options.h"

#include <CLI/CLI.hpp>
#include <cmath>

namespace printer {

std::variant<Options, int> parseOptions(int count, const char* const* words) {
  Options options;
  options.identity.owner = {"J-00000000-0", "COMERCIO DE DEMOSTRACION, C.A.", "ZPV0000001"};
  double igtfPercent = 3;
  CLI::App app{"A fiscal printer in software, on a pseudo-terminal."};
  app.add_option("--link", options.link, "Put a symbolic link to the device at PATH");
  app.add_option("--igtf", igtfPercent, "IGTF rate in percent")->check(CLI::Range(0.0, 99.99));
  try {
    app.parse(count, words);
  } catch (const CLI::ParseError& error) {
    return app.exit(error);
  }
  options.identity.igtfRate = static_cast<Rate>(std::lround(igtfPercent * 100));
  return options;
}

}  // namespace printer
