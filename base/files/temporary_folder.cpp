// Temporary folders.
#include "base/files/temporary_folder.h"

#include <random>
#include <system_error>

namespace zentaro::base {

TemporaryFolder::TemporaryFolder() {
  namespace fs = std::filesystem;
  std::random_device random;
  do path_ = fs::temp_directory_path() / ("zentaro-" + std::to_string(random()));
  while (!fs::create_directory(path_));
  fs::permissions(path_, fs::perms::owner_all);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace zentaro::base
