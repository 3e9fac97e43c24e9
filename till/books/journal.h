// The journal of a user's sales: one file of lines, to which only is added. The last line of an entry counts.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "till/books/entry.h"

namespace zentaro::tools {

/// $XDG_STATE_HOME/zentaro, else ~/.local/state/zentaro.
std::string stateFolder();

/// Names a process so that no later one has the same name; empty for one that is not alive.
std::string processName(int id);

class Journal {
 public:
  /// Makes the folder, open to this user alone. Raises std::system_error when the journal cannot be
  /// opened for writing.
  explicit Journal(const std::string& folder);
  ~Journal();
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;

  /// The entries of the last 60 days, oldest first.
  std::vector<Entry> entries() const;

  /// Writes the entry and waits until it is on the disk. Raises std::system_error.
  void keep(const Entry& entry);
  /// The same for a new entry, unless another process has begun a sale under its key meanwhile.
  bool begin(const Entry& entry);

 private:
  void append(const std::string& line);
  void dropOldEntries();

  std::string folder_;
  int file_ = -1, folderHandle_ = -1;
};

}  // namespace zentaro::tools
