// Files opened for appending: the system itself puts every write at the end, whoever else writes.
#include <fcntl.h>

#include "platform/posix/descriptor.h"
#include "platform/posix/posix_services.h"

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

class PosixFiles : public Files {
 public:
  std::unique_ptr<AppendFile> openForAppend(const std::string& path, std::error_code& error) override {
    // O_NONBLOCK: a pipe that nobody reads must not stop the program.
    constexpr int flags = O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    Descriptor file(uninterrupted([&] { return ::open(path.c_str(), flags, 0666); }));
    error = file.isOpen() ? std::error_code() : lastError();
    return file.isOpen() ? std::make_unique<PosixAppendFile>(std::move(file)) : nullptr;
  }
};

}  // namespace

Files& files() { return lasting<PosixFiles>(); }

}  // namespace zentaro::posix
