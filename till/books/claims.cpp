// Names of machines and devices as names of files.
#include "till/books/claims.h"

#include <chrono>
#include <system_error>
#include <thread>

#include "base/files/paths.h"
#include "till/books/books_error.h"

namespace zentaro::till {

namespace {

// Different names have different files, whatever stands in them: "/dev/pts/3" is "%2Fdev%2Fpts%2F3". What is too
// long for a file's name shares one with what begins alike, which only makes somebody wait.
std::string fileName(std::string_view name) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  constexpr std::size_t longest = 180;
  std::string made;
  for (const char c : name) {
    const bool isPlain =
        (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-';
    const auto byte = static_cast<unsigned char>(c);
    if (isPlain)
      made += c;
    else
      made += {'%', digits[byte >> 4], digits[byte & 0xF]};
  }
  return made.substr(0, longest);
}

}  // namespace

Claims::Claims(const std::string& booksPath) : folder_(files::pathOf(booksPath).parent_path() / "claims") {}

std::filesystem::path Claims::fileOf(const char* kind, const std::string& name) const {
  return folder_ / (std::string(kind) + "-" + fileName(name));
}

std::optional<Claim> Claims::take(const char* kind, const std::string& name) const {
  const std::filesystem::path file = fileOf(kind, name);
  try {
    system::makeFolders(folder_);
    return Claim::tryTake(file);
  } catch (const std::system_error& error) {
    throw BooksError(BooksError::Cause::Unusable, file.string(), error.what());
  }
}

bool Claims::isTaken(const char* kind, const std::string& name) const {
  const std::filesystem::path file = fileOf(kind, name);
  try {
    return Claim::isTaken(file);
  } catch (const std::system_error& error) {
    throw BooksError(BooksError::Cause::Unusable, file.string(), error.what());
  }
}

std::optional<Claim> waitFor(const std::function<std::optional<Claim>()>& tryTake,
                             const std::function<bool()>& goesOn) {
  constexpr std::chrono::milliseconds pause{100};
  for (;;) {
    if (std::optional<Claim> claim = tryTake()) return claim;
    if (!goesOn()) return std::nullopt;
    std::this_thread::sleep_for(pause);
  }
}

}  // namespace zentaro::till
