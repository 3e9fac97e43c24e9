// Owners and exceptions around SQLite's calls.
#include "till/books/sqlite.h"

#include <sqlite3.h>

#include <thread>

namespace zentaro::till {

namespace {

BooksError::Cause causeOf(int code) {
  switch (code & 0xFF) {  // the rest is detail
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL: return BooksError::Cause::Locked;
    case SQLITE_FULL: return BooksError::Cause::Full;
    case SQLITE_IOERR: return BooksError::Cause::Disk;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB: return BooksError::Cause::Damaged;
    default: return BooksError::Cause::Unusable;
  }
}

[[noreturn]] void fail(sqlite3* database, int code, const std::string& path) {
  const int extended = database == nullptr ? code : sqlite3_extended_errcode(database);
  const std::string text = database == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(database);
  throw BooksError(causeOf(code), path, text + ", " + std::to_string(extended));
}

void check(int code, sqlite3* database, const std::string& path) {
  if (code != SQLITE_OK) fail(database, code, path);
}

}  // namespace

void Statement::Finalize::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

Statement::Statement(sqlite3* database, std::string_view sql, const std::string& path)
    : database_(database), path_(path) {
  sqlite3_stmt* statement = nullptr;
  check(sqlite3_prepare_v2(database, sql.data(), static_cast<int>(sql.size()), &statement, nullptr), database,
        path);
  statement_.reset(statement);
}

Statement& Statement::with(std::int64_t value) {
  check(sqlite3_bind_int64(statement_.get(), ++bound_, value), database_, path_);
  return *this;
}

Statement& Statement::with(std::string_view value) {
  check(sqlite3_bind_text(statement_.get(), ++bound_, value.data(), static_cast<int>(value.size()),
                          SQLITE_TRANSIENT),
        database_, path_);
  return *this;
}

Statement& Statement::with(std::nullopt_t) {
  check(sqlite3_bind_null(statement_.get(), ++bound_), database_, path_);
  return *this;
}

bool Statement::next() {
  const int code = sqlite3_step(statement_.get());
  if (code == SQLITE_ROW) return true;
  if (code != SQLITE_DONE) fail(database_, code, path_);
  return false;
}

void Statement::run() {
  while (next()) {
  }
}

std::int64_t Statement::number(int column) const { return sqlite3_column_int64(statement_.get(), column); }

std::string Statement::text(int column) const {
  const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_.get(), column));
  const int size = sqlite3_column_bytes(statement_.get(), column);
  return bytes == nullptr ? std::string() : std::string(bytes, static_cast<std::size_t>(size));
}

bool Statement::isNull(int column) const {
  return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
}

Database::Database(const std::string& path, LockPatience patience)
    : path_(path), patience_(std::move(patience)) {
  constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
  const int code = sqlite3_open_v2(path.c_str(), &handle_, flags, nullptr);
  try {
    check(code, handle_, path_);
    check(sqlite3_busy_handler(handle_, onBusy, this), handle_, path_);
  } catch (const BooksError&) {
    sqlite3_close(handle_);
    throw;
  }
}

Database::~Database() { sqlite3_close(handle_); }

Statement Database::prepare(std::string_view sql) const { return {handle_, sql, path_}; }

void Database::run(const char* sql) const {
  check(sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr), handle_, path_);
}

std::int64_t Database::number(std::string_view sql) const {
  Statement statement = prepare(sql);
  return statement.next() ? statement.number(0) : 0;
}

int Database::changes() const { return sqlite3_changes(handle_); }

bool Database::hasMoved() const {
  int moved = 0;
  return sqlite3_file_control(handle_, nullptr, SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK && moved != 0;
}

bool Database::isInTransaction() const { return sqlite3_get_autocommit(handle_) == 0; }

void Database::patience(LockPatience patience) { patience_ = std::move(patience); }

// Called again and again while somebody else has the lock; `count` begins at 0 with each wait.
int Database::onBusy(void* self, int count) {
  using namespace std::chrono_literals;
  auto& database = *static_cast<Database*>(self);
  const auto now = std::chrono::steady_clock::now();
  if (count == 0) {
    database.busySince_ = now;
    database.hasTold_ = false;
  }
  const auto waited = now - database.busySince_;
  if (waited >= database.patience_.longest) return 0;
  if (waited >= std::chrono::seconds(1) && !database.hasTold_ && database.patience_.isWaiting) {
    database.hasTold_ = true;
    database.patience_.isWaiting();
  }
  std::this_thread::sleep_for(count < 20 ? 2ms : 20ms);
  return 1;
}

}  // namespace zentaro::till
