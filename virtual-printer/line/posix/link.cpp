// Placing and removing of the link.
#include "virtual-printer/line/posix/link.h"

#include <fcntl.h>

#include <cerrno>
#include <functional>
#include <random>
#include <stdexcept>
#include <system_error>

#include "base/terminal/language.h"

namespace virtual_printer {

namespace files = std::filesystem;
using zentaro::terminal::say;

namespace {

// How one printer knows that another, living one serves a link: a lock on its device, held as long as the printer
// lives, at a byte that belongs to the link's path. Numbers of pseudo-terminals are given again, so neither the
// device's name nor a printer on it says that this link is served. Hosts lock the device with flock, which is
// another kind of lock and does not meet this one.
struct flock markOf(const files::path& link) {
  constexpr std::size_t places = 0x7FFFFFFF;
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = static_cast<off_t>(std::hash<std::string>{}(link.string()) & places);
  lock.l_len = 1;
  return lock;
}

Socket opened(const files::path& device) {
  return Socket{::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)};
}

Socket markServed(const files::path& device, const files::path& link) {
  Socket mark = opened(device);
  struct flock lock = markOf(link);
  ::fcntl(static_cast<int>(mark.handle()), F_OFD_SETLK, &lock);
  return mark;
}

bool isServed(const files::path& link) {
  const Socket probe = opened(link);
  if (!probe.isOpen()) return errno == EBUSY;  // some host has it for itself
  struct flock lock = markOf(link);
  return ::fcntl(static_cast<int>(probe.handle()), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

}  // namespace

// Below the folder as it really is, so that a link has one name only.
Link::Link(const files::path& path)
    : path_{files::weakly_canonical(files::absolute(path).parent_path()) / path.filename()} {
  if (files::symlink_status(path_).type() == files::file_type::not_found) return;
  const std::string name = path_.string();
  if (!files::is_symlink(path_))
    throw std::runtime_error(say("--link {}: ahí hay un archivo; indique otra ruta o retírelo",
                                 "--link {}: there is a file; name another path or remove it", {name}));
  const files::path target = files::read_symlink(path_);
  if (files::exists(path_) && target.parent_path() != "/dev/pts")
    throw std::runtime_error(say("--link {}: ahí hay un enlace a {}; indique otra ruta o retírelo",
                                 "--link {}: there is a link to {}; name another path or remove it",
                                 {name, target.string()}));
  if (isServed(path_))
    throw std::runtime_error(say("--link {}: otra impresora lo está usando; indique otra ruta o termine esa",
                                 "--link {}: another printer is using it; name another path or end that one",
                                 {name}));
}

Link::~Link() {
  std::error_code ignored;
  if (!device_.empty() && files::read_symlink(path_, ignored) == device_) files::remove(path_, ignored);
}

// Beside the link first, under a name that nobody can foresee.
void Link::pointTo(const files::path& device) {
  files::path fresh;
  std::error_code failed;
  do {
    fresh = path_.string() + "." + std::to_string(std::random_device{}());
    files::create_symlink(device, fresh, failed);
  } while (failed == std::errc::file_exists);
  if (!failed) {
    mark_ = markServed(device, path_);
    files::rename(fresh, path_, failed);
    std::error_code ignored;
    if (failed) files::remove(fresh, ignored);
  }
  if (failed) throw std::runtime_error("--link " + path_.string() + ": " + failed.message());
  device_ = device;
}

}  // namespace virtual_printer
