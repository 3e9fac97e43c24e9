// Files opened for appending: the system itself puts every write at the end, whoever else writes.
#include <fcntl.h>

#include <filesystem>

#include "platform/posix/descriptor.h"
#include "platform/posix/posix_services.h"
#include "platform/system_paths.h"
#include "text/ascii.h"

namespace zentaro::posix {
namespace {

std::error_code lastError() { return {errno, std::generic_category()}; }

class PosixAppendFile : public AppendFile {
 public:
  explicit PosixAppendFile(Descriptor file) : file_(std::move(file)) {}

  std::error_code write(std::string_view bytes) override {
    while (!bytes.empty()) {  // a regular file takes all at once; less means that the disk is nearly full
      const ssize_t written =
          uninterrupted([&] { return ::write(file_.number(), bytes.data(), bytes.size()); });
      if (written < 0) return lastError();
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
  }

 private:
  Descriptor file_;
};

/// The path of a trace as Windows writes it, "C:\IFTRACE.TXT", names no folder here: the file goes into
/// the user's folder for such files, which is made when it is missing.
std::string pathHere(const std::string& path) {
  const bool hasDrive = path.size() > 2 && isAsciiLetter(path[0]) && path[1] == ':';
  const std::string folder = hasDrive ? stateFolder() : "";
  if (folder.empty()) return path;
  std::error_code ignored;  // opening the file tells
  std::filesystem::create_directories(folder, ignored);
  return folder + "/" + path.substr(path.find_last_of(":\\/") + 1);
}

class PosixFiles : public Files {
 public:
  std::unique_ptr<AppendFile> openForAppend(const std::string& name, std::error_code& error) override {
    const std::string path = pathHere(name);
    // O_NONBLOCK: a pipe that nobody reads must not stop the program.
    constexpr int flags = O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    Descriptor file(uninterrupted([&] { return ::open(path.c_str(), flags, 0666); }));
    error = file.isOpen() ? std::error_code{} : lastError();
    return file.isOpen() ? std::make_unique<PosixAppendFile>(std::move(file)) : nullptr;
  }
};

}  // namespace

Files& files() { return lasting<PosixFiles>(); }

}  // namespace zentaro::posix
