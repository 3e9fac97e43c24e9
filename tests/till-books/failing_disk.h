// A disk under SQLite that dies at the nth write, truncation, sync or removal, and what a restart may find on it:
// everything (the process was killed), or what was synced and of the rest nothing, a torn end, zeros or any part
// (the power failed).
#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "support/scratch.h"

namespace zentaro::testing {

enum class Rest { Kept, Dropped, Torn, Zeroed, AnyPart };

class FailingDisk {
 public:
  /// From now on the disk of all databases; one at a time.
  FailingDisk() {
    real_ = sqlite3_vfs_find(nullptr);
    vfs_ = *real_;
    vfs_.zName = "failing";
    vfs_.pAppData = this;
    vfs_.szOsFile = static_cast<int>(sizeof(File)) + real_->szOsFile;
    vfs_.xOpen = [](sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* given) {
      return of(vfs).open(name, file, flags, given);
    };
    vfs_.xDelete = [](sqlite3_vfs* vfs, const char* name, int syncs) { return of(vfs).remove(name, syncs); };
    sqlite3_vfs_register(&vfs_, 1);
  }
  FailingDisk(const FailingDisk&) = delete;
  FailingDisk& operator=(const FailingDisk&) = delete;
  ~FailingDisk() { sqlite3_vfs_unregister(&vfs_); }

  /// Dies at that operation, counted from 1; 0: never. What the restart finds is put into the folder.
  void dieAt(int operation, Rest rest, const std::filesystem::path& image) {
    stored_.clear();
    operations_ = 0;
    dieAt_ = operation;
    rest_ = rest;
    image_ = image;
    isDead_ = false;
  }
  bool isDead() const { return isDead_; }
  int operations() const { return operations_; }

 private:
  struct Pending {
    std::size_t offset;
    std::string bytes;  // none: the file ends here
  };
  struct Stored {
    std::string synced;
    std::vector<Pending> pending;
  };
  struct File {
    sqlite3_file base;
    FailingDisk* disk;
    std::string* path;
    sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
  };

  static FailingDisk& of(sqlite3_vfs* vfs) { return *static_cast<FailingDisk*>(vfs->pAppData); }
  static File& of(sqlite3_file* file) { return *reinterpret_cast<File*>(file); }

  static std::string wholeOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string content(std::filesystem::exists(path) ? std::filesystem::file_size(path) : 0, '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    return content;
  }

  // Whether the disk lives on for one more operation.
  bool lives() {
    if (isDead_) return false;
    if (++operations_ != dieAt_) return true;
    isDead_ = true;
    makeImage();
    return false;
  }

  int open(const char* name, sqlite3_file* opened, int flags, int* given) {
    File& file = of(opened);
    file.base.pMethods = nullptr;
    const int code = real_->xOpen(real_, name, file.real(), flags, given);
    if (code != SQLITE_OK) return code;
    file.disk = this;
    file.path = new std::string(name == nullptr ? "" : name);
    if (name != nullptr) stored_.try_emplace(*file.path, Stored{wholeOf(*file.path), {}});
    static const sqlite3_io_methods methods = methodsOf();
    file.base.pMethods = &methods;
    return SQLITE_OK;
  }

  int remove(const char* name, int syncs) {
    if (!lives()) return SQLITE_IOERR_DELETE;
    stored_.erase(name);
    return real_->xDelete(real_, name, syncs);
  }

  static sqlite3_io_methods methodsOf() {
    sqlite3_io_methods m{};
    m.iVersion = 2;
    m.xClose = [](sqlite3_file* f) {
      delete of(f).path;
      return of(f).real()->pMethods->xClose(of(f).real());
    };
    m.xWrite = [](sqlite3_file* f, const void* bytes, int count, sqlite3_int64 offset) {
      File& file = of(f);
      if (!file.disk->lives()) return SQLITE_IOERR_WRITE;
      file.disk->stored_[*file.path].pending.push_back(
          {static_cast<std::size_t>(offset),
           {static_cast<const char*>(bytes), static_cast<std::size_t>(count)}});
      return file.real()->pMethods->xWrite(file.real(), bytes, count, offset);
    };
    m.xTruncate = [](sqlite3_file* f, sqlite3_int64 size) {
      File& file = of(f);
      if (!file.disk->lives()) return SQLITE_IOERR_TRUNCATE;
      file.disk->stored_[*file.path].pending.push_back({static_cast<std::size_t>(size), {}});
      return file.real()->pMethods->xTruncate(file.real(), size);
    };
    m.xSync = [](sqlite3_file* f, int) {
      File& file = of(f);
      if (!file.disk->lives()) return SQLITE_IOERR_FSYNC;
      file.disk->stored_[*file.path] = {wholeOf(*file.path), {}};
      return SQLITE_OK;  // the model remembers what is synced; a real sync would only take time
    };
    m.xRead = [](sqlite3_file* f, void* b, int n, sqlite3_int64 o) {
      return of(f).real()->pMethods->xRead(of(f).real(), b, n, o);
    };
    m.xFileSize = [](sqlite3_file* f, sqlite3_int64* s) {
      return of(f).real()->pMethods->xFileSize(of(f).real(), s);
    };
    m.xLock = [](sqlite3_file* f, int l) { return of(f).real()->pMethods->xLock(of(f).real(), l); };
    m.xUnlock = [](sqlite3_file* f, int l) { return of(f).real()->pMethods->xUnlock(of(f).real(), l); };
    m.xCheckReservedLock = [](sqlite3_file* f, int* r) {
      return of(f).real()->pMethods->xCheckReservedLock(of(f).real(), r);
    };
    m.xFileControl = [](sqlite3_file* f, int op, void* a) {
      return of(f).real()->pMethods->xFileControl(of(f).real(), op, a);
    };
    m.xSectorSize = [](sqlite3_file* f) { return of(f).real()->pMethods->xSectorSize(of(f).real()); };
    m.xDeviceCharacteristics = [](sqlite3_file*) {
      return 0;
    };  // no mercy: nothing is atomic, nothing in order
    m.xShmMap = [](sqlite3_file* f, int p, int s, int e, void volatile** m2) {
      return of(f).real()->pMethods->xShmMap(of(f).real(), p, s, e, m2);
    };
    m.xShmLock = [](sqlite3_file* f, int o, int n, int l) {
      return of(f).real()->pMethods->xShmLock(of(f).real(), o, n, l);
    };
    m.xShmBarrier = [](sqlite3_file* f) { of(f).real()->pMethods->xShmBarrier(of(f).real()); };
    m.xShmUnmap = [](sqlite3_file* f, int d) { return of(f).real()->pMethods->xShmUnmap(of(f).real(), d); };
    return m;
  }

  void makeImage() {
    for (const auto& [path, stored] : stored_) {
      const std::filesystem::path target = image_ / std::filesystem::path(path).filename();
      if (rest_ == Rest::Kept) {
        std::filesystem::copy(path, target);
      } else {
        std::ofstream(target, std::ios::binary) << afterPowerCut(stored);
      }
    }
    for (const auto& [path, stored] : stored_)
      if (rest_ == Rest::Kept && std::filesystem::exists(path + "-shm"))
        std::filesystem::copy(path + "-shm",
                              image_ / (std::filesystem::path(path).filename().string() + "-shm"));
  }

  std::string afterPowerCut(const Stored& stored) {
    std::string content = stored.synced;
    for (std::size_t i = 0; i < stored.pending.size(); ++i) {
      const bool isLast = i + 1 == stored.pending.size();
      switch (rest_ == Rest::AnyPart ? static_cast<Rest>(random_() % 4) : rest_) {
        case Rest::Dropped: break;
        case Rest::Zeroed: apply(content, stored.pending[i], 0); break;
        case Rest::Torn: apply(content, stored.pending[i], isLast || rest_ == Rest::AnyPart ? 2 : 1); break;
        case Rest::Kept:
        case Rest::AnyPart: apply(content, stored.pending[i], 1); break;
      }
    }
    return content;
  }

  // All of it (1), the first half (2), or zeros (0).
  static void apply(std::string& content, const Pending& change, std::size_t part) {
    if (change.bytes.empty()) return content.resize(change.offset);
    const std::size_t count = part == 2 ? change.bytes.size() / 2 : change.bytes.size();
    if (content.size() < change.offset + count) content.resize(change.offset + count);
    content.replace(change.offset, count,
                    part == 0 ? std::string(count, '\0') : change.bytes.substr(0, count));
  }

  sqlite3_vfs vfs_;
  sqlite3_vfs* real_;
  std::map<std::string, Stored> stored_;
  std::minstd_rand random_{1};
  std::filesystem::path image_;
  Rest rest_ = Rest::Kept;
  int operations_ = 0, dieAt_ = 0;
  bool isDead_ = false;
};

}  // namespace zentaro::testing
