// Loading and saving of the books.
#include "shell/state_file.h"

#include <fcntl.h>
#include <sys/file.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "fiscal/books_json.h"
#include "shell/replace_file.h"

namespace printer {

// The lock has a file of its own, because the state file itself is replaced with every change.
StateFile::StateFile(std::filesystem::path path) : path_{std::move(path)} {
  const std::string lockPath = path_.string() + ".lock";
  lock_ = Descriptor{::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644)};
  if (!lock_.isOpen())
    throw std::system_error{errno, std::generic_category(), "--state: opening " + lockPath};
  if (::flock(lock_.get(), LOCK_EX | LOCK_NB) != 0)
    throw std::runtime_error{"--state " + path_.string() + ": another printer is using this file"};
}

Books StateFile::load() const {
  if (!std::filesystem::exists(path_)) return {};
  std::ifstream file{path_, std::ios::binary};
  const std::string text{std::istreambuf_iterator<char>{file}, {}};
  try {
    if (!file) throw std::runtime_error{"it cannot be read"};
    return booksFromJson(text);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error{"--state " + path_.string() + ": " + error.what() +
                             "; move the file away to begin with an empty fiscal memory"};
  }
}

void StateFile::save(const Books& books) const { replaceFile(path_, toJson(books)); }

}  // namespace printer
