// The journal's file: added to under a lock, synced line by line, and replaced as a whole when old entries go.
#include "till/books/journal.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

#include "base/files/json.h"

namespace zentaro::tools {

namespace {

constexpr std::int64_t keptSeconds = 60LL * 24 * 60 * 60;

[[noreturn]] void fail(const std::string& path) {
  throw std::system_error(errno, std::generic_category(), path);
}

std::int64_t secondsNow() {
  return std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch())
      .count();
}

void writeAll(int file, std::string_view text, const std::string& path) {
  while (!text.empty()) {
    const ssize_t count = ::write(file, text.data(), text.size());
    if (count < 0 && errno != EINTR) fail(path);
    if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
  }
  if (::fdatasync(file) != 0) fail(path);
}

/// The folder is locked, not the file, which may be replaced.
class FolderLock {
 public:
  explicit FolderLock(int folder) : folder_(folder) {
    while (::flock(folder_, LOCK_EX) != 0 && errno == EINTR) {
    }
  }
  ~FolderLock() { ::flock(folder_, LOCK_UN); }
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

 private:
  int folder_;
};

std::string journalPath(const std::string& folder) { return folder + "/sales.jsonl"; }

/// Every entry by its last line, in the order in which they began.
std::vector<Entry> readEntries(const std::string& path) {
  std::vector<Entry> entries;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    const std::optional<Entry> entry = entryFrom(line);
    if (!entry) continue;
    const auto known = std::ranges::find(entries, entry->name, &Entry::name);
    if (known == entries.end())
      entries.push_back(*entry);
    else
      *known = *entry;
  }
  return entries;
}

bool isUnderWay(const Entry& entry) {
  const int id = std::atoi(entry.process.c_str());
  return !entry.fact && id != ::getpid() && !entry.process.empty() && processName(id) == entry.process;
}

bool isOld(const Entry& entry) { return entry.at < secondsNow() - keptSeconds; }

}  // namespace

std::string stateFolder() {
  const char* state = std::getenv("XDG_STATE_HOME");
  if (state != nullptr && *state == '/') return std::string(state) + "/zentaro";
  const char* home = std::getenv("HOME");
  return (home == nullptr ? std::string() : std::string(home)) + "/.local/state/zentaro";
}

// "123:4567": a number is given again, but not with the same moment of its start.
std::string processName(int id) {
  std::ifstream file("/proc/" + std::to_string(id) + "/stat");
  std::string line;
  std::getline(file, line);
  std::istringstream fields(
      line.substr(std::min(line.size(), line.rfind(')') + 1)));  // the name may hold blanks
  std::string field;
  constexpr int startTime = 20;  // behind the name
  for (int i = 0; i < startTime; ++i) fields >> field;
  return fields ? std::to_string(id) + ":" + field : std::string();
}

Journal::Journal(const std::string& folder) : folder_(folder) {
  std::error_code failed;
  std::filesystem::create_directories(std::filesystem::path(folder).parent_path(), failed);
  constexpr mode_t forTheUserAlone = 0700;
  if (::mkdir(folder.c_str(), forTheUserAlone) != 0 && errno != EEXIST) fail(folder);
  folderHandle_ = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folderHandle_ < 0) fail(folder);
  dropOldEntries();
}

Journal::~Journal() {
  if (file_ >= 0) ::close(file_);
  ::close(folderHandle_);
}

std::vector<Entry> Journal::entries() const {
  std::vector<Entry> entries = readEntries(journalPath(folder_));
  std::erase_if(entries, isOld);
  for (Entry& entry : entries) entry.isUnderWay = isUnderWay(entry);
  return entries;
}

void Journal::keep(const Entry& entry) {
  const FolderLock lock(folderHandle_);
  append(jsonLine(toJson(entry)) + "\n");
}

bool Journal::begin(const Entry& entry) {
  const FolderLock lock(folderHandle_);
  const auto isRival = [&](const Entry& other) {
    return !entry.key.empty() && other.key == entry.key && other.fact != Fact::NotPrinted;
  };
  if (std::ranges::any_of(entries(), isRival)) return false;
  append(jsonLine(toJson(entry)) + "\n");
  return true;
}

// Opened anew each time, because another process may have replaced the file. A line that a crash
// has cut short is ended first.
void Journal::append(const std::string& line) {
  const std::string path = journalPath(folder_);
  if (file_ >= 0) ::close(file_);
  constexpr mode_t forTheUserAlone = 0600;
  file_ = ::open(path.c_str(), O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW, forTheUserAlone);
  if (file_ < 0) fail(path);
  struct stat status {};
  char last = '\n';
  if (::fstat(file_, &status) != 0) fail(path);
  if (status.st_size > 0 && ::pread(file_, &last, 1, status.st_size - 1) != 1) fail(path);
  writeAll(file_, last == '\n' ? line : "\n" + line, path);
  if (status.st_size == 0 && ::fsync(folderHandle_) != 0) fail(folder_);
}

void Journal::dropOldEntries() {
  const FolderLock lock(folderHandle_);
  const std::string path = journalPath(folder_), fresh = path + ".new";
  std::vector<Entry> all = readEntries(path);
  append("");  // whether the journal can be written at all shows before anything is sent
  if (std::erase_if(all, isOld) == 0) return;
  std::string text;
  for (const Entry& entry : all) text += jsonLine(toJson(entry)) + "\n";
  const int file = ::open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600);
  if (file < 0) fail(fresh);
  writeAll(file, text, fresh);
  ::close(file);
  if (::rename(fresh.c_str(), path.c_str()) != 0 || ::fsync(folderHandle_) != 0) fail(path);
}

}  // namespace zentaro::tools
