// Loading and saving of the books.
#include "virtual-printer/shell/state_file.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "base/files/careful_file.h"
#include "base/terminal/language.h"

namespace printer {

using zentaro::terminal::say;

// The lock has a file of its own, because the state file itself is replaced with every change.
StateFile::StateFile(const std::filesystem::path& path) : path_{zentaro::tools::behindLinks(path)} {
  if (std::filesystem::exists(path_) && !std::filesystem::is_regular_file(path_))
    throw std::runtime_error(say("--state: {} no es un archivo", "--state: {} is no file", {path_.string()}));
  const std::string lock = path_.string() + ".lock";
  lock_ = Descriptor(::open(lock.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0644));
  if (!lock_.isOpen())
    throw std::runtime_error(say("--state: no se puede abrir {}: {}", "--state: cannot open {}: {}",
                                 {lock, std::strerror(errno)}));
  if (::flock(lock_.get(), LOCK_EX | LOCK_NB) != 0)
    throw std::runtime_error(say("--state {}: otra impresora está usando este archivo",
                                 "--state {}: another printer is using this file", {path_.string()}));
}

Books StateFile::load() const {
  const auto text = zentaro::tools::contentOf(path_);
  if (!text) return {};
  try {
    return booksFromJson(*text);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(say("--state {}: {}; retire el archivo para empezar con la memoria fiscal vacía",
                                 "--state {}: {}; move the file away to begin with an empty fiscal memory",
                                 {path_.string(), error.what()}));
  }
}

void StateFile::save(const Books& books) {
  try {
    zentaro::tools::replaceFile(path_, text_.of(books));
  } catch (const std::runtime_error&) {
    text_.forget();  // the next books may go on from others
    throw;
  }
}

}  // namespace printer
