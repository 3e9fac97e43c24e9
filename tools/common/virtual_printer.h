// A virtual printer for one command: what a command uses when nobody names a port.
#pragma once

#include <string>
#include <vector>

#include "common/child_process.h"
#include "common/temporary_folder.h"

namespace zentaro::tools {

class VirtualPrinter {
 public:
  /// Starts `zentaro-printer` with these further options and waits until it is ready. Raises
  /// std::runtime_error, with what it said, when it does not become ready.
  explicit VirtualPrinter(const std::vector<std::string>& options = {});

  /// The path by which its line is opened.
  std::string device() const { return (folder_.path() / "printer").string(); }
  /// The documents printed so far, as text.
  std::string paper() const;

 private:
  std::string paperFile() const { return (folder_.path() / "paper.txt").string(); }
  std::vector<std::string> words(const std::vector<std::string>& options) const;
  void waitUntilReady();

  TemporaryFolder folder_;
  ChildProcess process_;
};

}  // namespace zentaro::tools
