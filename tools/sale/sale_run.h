// One sale from a file to its verdict: checks, journal, port, printer.
#pragma once

#include <string>
#include <vector>

#include "tools/connection/connection.h"

namespace zentaro::tools {

struct SaleOptions {
  std::string file;  // "-" for standard input
  PortOptions port;
  std::vector<std::string> faults;  // for the virtual printer
  bool isCheckOnly = false, isJson = false;
  std::string key;      // --id
  bool again = false;   // --again
  std::string resolve;  // --resolve: "printed", "not-printed" or empty
};

/// Gives the exit status.
int runSale(const SaleOptions& options);

}  // namespace zentaro::tools
