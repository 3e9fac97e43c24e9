// A virtual printer for one command: what a command uses when nobody names a port.
#pragma once

#include <string>
#include <vector>

#include "base/system/child_process.h"

namespace zentaro::tools {

class VirtualPrinter {
 public:
  /// Starts `zentaro-printer` with these further options and waits until it is ready. Raises
  /// std::runtime_error, with what it said, when it does not become ready.
  explicit VirtualPrinter(const std::vector<std::string>& options = {});

  /// The path by which its line is opened.
  const std::string& device() const { return device_; }
  /// The address of its page, when the options asked for one.
  const std::string& page() const { return page_; }
  /// The documents printed so far, as text.
  std::string paper() const;

 private:
  void waitUntilReady();

  base::ChildProcess process_;
  std::string device_, paper_;  // in a folder of the printer's own, which it removes at its end
  std::string page_;
};

}  // namespace zentaro::tools
