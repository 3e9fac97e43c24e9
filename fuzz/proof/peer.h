// A virtual printer in a process of its own, for proofs that need a printer behind a real pseudo-terminal.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace proof {

class Peer {
 public:
  /// Starts the zentaro-printer that lies beside this program and waits until it is ready.
  explicit Peer(const std::vector<std::string>& options = {});
  ~Peer();
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;

  std::string device() const { return (folder_ / "printer").string(); }
  std::filesystem::path folder() const { return folder_; }
  std::string stateFile() const { return (folder_ / "state.json").string(); }

 private:
  std::filesystem::path folder_;
  pid_t process_;
};

/// Open descriptors of this process.
std::size_t openDescriptors();
/// What they lead to.
std::string descriptorNames();
/// Resident memory of this process, in kilobytes.
long residentKilobytes();

}  // namespace proof
