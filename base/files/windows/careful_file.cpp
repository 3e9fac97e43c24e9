// Write beside, flush to the disk, move over; what somebody reads cannot be replaced for a moment.
#include "base/files/careful_file.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "base/terminal/language.h"
#include "base/terminal/windows/text.h"

namespace zentaro::base {

namespace {

namespace fs = std::filesystem;
using terminal::say;

[[noreturn]] void failToRead(const fs::path& path, const std::string& reason) {
  throw std::runtime_error(say("no se puede leer {}: {}", "cannot read {}: {}", {path.string(), reason}));
}
[[noreturn]] void failToWrite(const fs::path& path, const std::string& reason) {
  throw std::runtime_error(
      say("no se puede escribir {}: {}", "cannot write {}: {}", {path.string(), reason}));
}

void demandFile(const fs::path& path) {
  std::error_code none;
  if (fs::exists(path, none) && !fs::is_regular_file(path, none))
    throw std::runtime_error(say("{} no es un archivo", "{} is no file", {path.string()}));
}

void writeFresh(const fs::path& path, std::string_view content) {
  HANDLE const file =
      ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) failToWrite(path, terminal::reasonOf());
  DWORD written = 0;
  const bool isDone =
      ::WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr) != 0 &&
      written == content.size() && ::FlushFileBuffers(file) != 0;
  const std::string reason = isDone ? "" : terminal::reasonOf();
  ::CloseHandle(file);
  if (isDone) return;
  ::DeleteFileW(path.c_str());
  failToWrite(path, reason);
}

}  // namespace

fs::path behindLinks(fs::path path) { return path; }

std::optional<std::string> contentOf(const fs::path& path) {
  std::error_code none;
  if (!fs::exists(path, none)) return std::nullopt;
  demandFile(path);
  std::ifstream file(path, std::ios::binary);
  if (!file) failToRead(path, std::strerror(errno));
  return std::string(std::istreambuf_iterator<char>(file), {});
}

files::Descriptor openToAppend(const fs::path& path) {
  demandFile(path);
  constexpr int flags = _O_WRONLY | _O_APPEND | _O_CREAT | _O_BINARY | _O_NOINHERIT;
  files::Descriptor file(::_wopen(path.c_str(), flags, _S_IREAD | _S_IWRITE));
  if (!file.isOpen()) failToWrite(path, std::strerror(errno));
  return file;
}

void replaceFile(const fs::path& path, std::string_view content) {
  constexpr int attempts = 40;
  constexpr DWORD pause = 50;
  demandFile(path);
  fs::path fresh = path;
  fresh += L".new";
  writeFresh(fresh, content);
  for (int attempt = 1;; ++attempt) {
    if (::MoveFileExW(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0)
      return;
    const DWORD error = ::GetLastError();
    const bool isHeld = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
    if (!isHeld || attempt == attempts) {
      ::DeleteFileW(fresh.c_str());
      failToWrite(path, terminal::reasonOf(error));
    }
    ::Sleep(pause);
  }
}

}  // namespace zentaro::base
