// Placing and removing of the link.
#include "line/link.h"

#include <stdexcept>
#include <utility>

namespace printer {

namespace files = std::filesystem;

Link::Link(files::path path) : path_{std::move(path)} {
  const bool isThere = files::symlink_status(path_).type() != files::file_type::not_found;
  if (isThere && !files::is_symlink(path_))
    throw std::runtime_error{"--link " + path_.string() +
                             ": there is a file; name another path or remove it"};
  if (isThere && files::exists(path_))
    throw std::runtime_error{"--link " + path_.string() + ": the link is in use (it leads to " +
                             files::read_symlink(path_).string() + "); name another path or remove it"};
}

Link::~Link() {
  std::error_code ignored;
  if (!device_.empty() && files::read_symlink(path_, ignored) == device_) files::remove(path_, ignored);
}

void Link::pointTo(const files::path& device) {
  const files::path fresh = path_.string() + ".new";
  files::remove(fresh);
  files::create_symlink(device, fresh);
  files::rename(fresh, path_);
  device_ = device;
}

}  // namespace printer
