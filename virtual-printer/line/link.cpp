// Placing and removing of the link.
#include "line/link.h"

#include <stdexcept>
#include <utility>

#include "line/served_mark.h"

namespace printer {

namespace files = std::filesystem;

Link::Link(files::path path) : path_{std::move(path)} {
  if (files::symlink_status(path_).type() == files::file_type::not_found) return;
  const std::string place = "--link " + path_.string() + ": ";
  if (!files::is_symlink(path_))
    throw std::runtime_error{place + "there is a file; name another path or remove it"};
  const files::path target = files::read_symlink(path_);
  if (files::exists(path_) && target.parent_path() != "/dev/pts")
    throw std::runtime_error{place + "there is a link to " + target.string() +
                             "; name another path or remove it"};
  if (isServed(path_))
    throw std::runtime_error{place + "another printer is using it; name another path or end that printer"};
}

Link::~Link() {
  std::error_code ignored;
  if (!device_.empty() && files::read_symlink(path_, ignored) == device_) files::remove(path_, ignored);
}

void Link::pointTo(const files::path& device) {
  const files::path fresh = path_.string() + ".new";
  files::remove(fresh);
  files::create_symlink(device, fresh);
  mark_ = markServed(device, path_);
  files::rename(fresh, path_);
  device_ = device;
}

}  // namespace printer
