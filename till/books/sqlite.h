// A database file and its statements: SQLite with owners, exceptions and a wait that somebody is told of.
//
// One thread a Database. Required: nothing else in the process opens and closes the file, since closing any
// descriptor of a file takes the locks that SQLite holds on it away.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "till/books/books_error.h"

struct sqlite3;
struct sqlite3_stmt;

namespace zentaro::till {

/// How long somebody else's lock is waited for, and who is told, once, when that takes more than a second.
struct LockPatience {
  std::chrono::milliseconds longest{10000};
  std::function<void()> isWaiting = {};
};

class Statement {
 public:
  Statement(Statement&&) = default;
  Statement& operator=(Statement&&) = default;

  /// Binds the next parameter; nothing becomes NULL.
  Statement& with(std::int64_t value);
  Statement& with(std::string_view value);
  Statement& with(const char* value) { return with(std::string_view(value)); }
  Statement& with(int value) { return with(std::int64_t{value}); }
  Statement& with(bool value) { return with(std::int64_t{value}); }
  Statement& with(std::nullopt_t);
  template <class T>
  Statement& with(const std::optional<T>& value) {
    return value ? with(*value) : with(std::nullopt);
  }

  /// Whether there is another row.
  bool next();
  /// For a statement that gives none.
  void run();

  /// Columns of the row. A NULL is 0, or the empty text.
  std::int64_t number(int column) const;
  std::string text(int column) const;
  bool isNull(int column) const;

 private:
  friend class Database;
  Statement(sqlite3* database, std::string_view sql, const std::string& path);

  struct Finalize {
    void operator()(sqlite3_stmt* statement) const;
  };
  sqlite3* database_;
  std::string path_;
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
  int bound_ = 0;
};

class Database {
 public:
  /// The file must be there. Every failure, here and below, is a BooksError.
  Database(const std::string& path, LockPatience patience);
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database();

  Statement prepare(std::string_view sql) const;
  /// Several statements without parameters.
  void run(const char* sql) const;
  /// The one number that a query gives.
  std::int64_t number(std::string_view sql) const;
  /// Rows that the last statement changed.
  int changes() const;
  /// Whether the file's name leads elsewhere by now, or nowhere.
  bool hasMoved() const;
  bool isInTransaction() const;

  void patience(LockPatience patience);
  const std::string& path() const { return path_; }

 private:
  static int onBusy(void* self, int count);

  std::string path_;
  LockPatience patience_;
  std::chrono::steady_clock::time_point busySince_;
  bool hasTold_ = false;
  sqlite3* handle_ = nullptr;
};

}  // namespace zentaro::till
