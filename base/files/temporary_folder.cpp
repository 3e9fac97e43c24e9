// Temporary folders.
#include "base/files/temporary_folder.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace zentaro::base {

TemporaryFolder::TemporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "zentaro-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::system_error(errno, std::generic_category(), name);
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace zentaro::base
