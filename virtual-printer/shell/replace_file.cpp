// Write beside, flush to the disk, rename over.
#include "shell/replace_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "line/descriptor.h"

namespace printer {
namespace {

[[noreturn]] void fail(const std::string& path) {
  throw std::system_error{errno, std::generic_category(), "writing " + path};
}

void writeAll(const Descriptor& file, std::string_view rest, const std::string& path) {
  while (!rest.empty()) {
    const ssize_t count = ::write(file.get(), rest.data(), rest.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) fail(path);
    rest.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace

void replaceFile(const std::filesystem::path& path, const std::string& content) {
  const std::string fresh = path.string() + ".new";
  const Descriptor file{::open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644)};
  if (!file.isOpen()) fail(fresh);
  writeAll(file, content, fresh);
  if (::fsync(file.get()) != 0) fail(fresh);
  if (::rename(fresh.c_str(), path.c_str()) != 0) fail(path.string());
}

}  // namespace printer
