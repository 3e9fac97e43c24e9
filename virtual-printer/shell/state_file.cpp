// Loading and saving of the books.
#include "virtual-printer/shell/state_file.h"

#include <stdexcept>
#include <system_error>

#include "base/files/careful_file.h"
#include "base/terminal/language.h"

namespace virtual_printer {

using zentaro::terminal::say;

// The lock has a file of its own, because the state file itself is replaced with every change.
StateFile::StateFile(const std::filesystem::path& path) : path_{zentaro::base::behindLinks(path)} {
  if (std::filesystem::exists(path_) && !std::filesystem::is_regular_file(path_))
    throw std::runtime_error(say("--state: {} no es un archivo", "--state: {} is no file", {path_.string()}));
  try {
    std::filesystem::path beside = path_;
    lock_ = zentaro::system::FileLock::tryTake(beside += ".lock");
  } catch (const std::system_error& error) {
    throw std::runtime_error(std::string{"--state: "} + error.what());
  }
  if (!lock_)
    throw std::runtime_error(say("--state {}: otra impresora está usando este archivo",
                                 "--state {}: another printer is using this file", {path_.string()}));
}

Books StateFile::load() const {
  const auto text = zentaro::base::contentOf(path_);
  if (!text) return {};
  try {
    return booksFromJson(*text);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(say("--state {}: {}; retire el archivo para empezar con la memoria fiscal vacía",
                                 "--state {}: {}; move the file away to begin with an empty fiscal memory",
                                 {path_.string(), error.what()}));
  }
}

void StateFile::save(const Books& books) const { zentaro::base::replaceFile(path_, toJson(books)); }

}  // namespace virtual_printer
