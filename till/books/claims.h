// Who is at a machine now. A claim is a lock of the kernel on a file beside the books: it ends with its holder,
// whatever ends that, and no process number has to be believed.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "base/system/shared_file.h"

namespace zentaro::till {

using Claim = system::FileLock;

class Claims {
 public:
  /// Of everybody who keeps these books.
  explicit Claims(const std::string& booksPath);

  /// Each gives nothing when somebody has the claim. Failures are BooksErrors. A device, before its port is
  /// opened; a machine, by its serial number, as long as anything may be printed on it; a part that only one
  /// program may play, such as the service.
  std::optional<Claim> device(const std::string& path) const { return take("device", path); }
  std::optional<Claim> machine(const std::string& name) const { return take("machine", name); }
  std::optional<Claim> part(const std::string& name) const { return take("part", name); }

  /// Each is also true for a claim of one's own.
  bool isMachineTaken(const std::string& name) const { return isTaken("machine", name); }
  bool isPartTaken(const std::string& name) const { return isTaken("part", name); }

 private:
  std::optional<Claim> take(const char* kind, const std::string& name) const;
  bool isTaken(const char* kind, const std::string& name) const;
  std::filesystem::path fileOf(const char* kind, const std::string& name) const;

  std::filesystem::path folder_;
};

/// Tries every 100 ms until it has the claim, or `goesOn` says no; it is asked before each further try.
std::optional<Claim> waitFor(const std::function<std::optional<Claim>()>& tryTake,
                             const std::function<bool()>& goesOn);

}  // namespace zentaro::till
