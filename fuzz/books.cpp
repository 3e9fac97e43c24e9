// What stands in books and old journals, whoever wrote it: a row of the table ("r", then one value a line), or a journal
// ("j"). Whatever it is, it is refused as damaged or judged without an error of arithmetic; a journal is read once, and
// an id that it says was printed is never printed again.
#include <sqlite3.h>

#include <filesystem>
#include <fstream>

#include "base/files/json.h"
#include "check.h"
#include "till/books/admission.h"
#include "till/books/evidence.h"
#include "till/books/old_journal.h"
#include "till/books/schema.h"

namespace {

using namespace zentaro::till;
using fuzz::require;

const std::filesystem::path& folder() {
  static const std::filesystem::path made = [] {
    const char* memory = "/dev/shm";
    const std::filesystem::path below =
        std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path().string();
    std::string pattern = (below / "zentaro-fuzz-XXXXXX").string();
    std::filesystem::path path = ::mkdtemp(pattern.data());
    std::atexit([] { std::filesystem::remove_all(folder()); });
    return path;
  }();
  return made;
}

Books& books() {
  static Books made(folder() / "books.db");
  return made;
}

sqlite3* stranger() {
  static sqlite3* const database = [] {
    sqlite3* opened = nullptr;
    require(sqlite3_open((folder() / "books.db").c_str(), &opened) == SQLITE_OK, "the file opens");
    return opened;
  }();
  return database;
}

void ask() {
  const auto nobody = [](const std::string& machine) { return machine == "B1"; };
  for (const Job& job : books().latest(100)) {
    for (const int document : {0, 1, 2, 4})
      for (const std::int64_t number : {std::int64_t{0}, job.before.lastNumber, job.before.lastNumber + 1})
        judged(job, {document, number, job.before.dayAmount, job.before.lastZ},
               books().otherHolder(job, number));
    const Ruling ruling = admitted(books(), {job.id, job.digest, "1:d", false}, Stage::BeforeOpening, nobody);
    require(ruling.answer != Answer::Print || job.id.empty() || job.state == State::NotPrinted,
            "only what was not printed is printed");
    require(job.state != State::Printed || job.id.empty() || !books().put(job),
            "what was printed is not queued");
  }
  books().judgeable("A1");
}

void askRow(std::string_view text) {
  const auto values = fuzz::split(text, '\n');
  const std::string columns(jobColumns);
  std::string sql = "INSERT OR REPLACE INTO job(" + columns + ") VALUES(?";
  for (const char c : columns) sql += c == ',' ? ",?" : "";
  sqlite3_stmt* insertion = nullptr;
  sqlite3_prepare_v2(stranger(), (sql + ")").c_str(), -1, &insertion, nullptr);
  for (int i = 1; i <= sqlite3_bind_parameter_count(insertion); ++i) {
    const std::string value(
        static_cast<std::size_t>(i) <= values.size() ? values[static_cast<std::size_t>(i) - 1] : "");
    if (value.find_first_not_of("-0123456789") == std::string::npos && !value.empty())
      sqlite3_bind_int64(insertion, i, std::strtoll(value.c_str(), nullptr, 10));
    else if (value != "NULL")
      sqlite3_bind_text(insertion, i, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
  }
  sqlite3_step(insertion);
  sqlite3_finalize(insertion);
  try {
    ask();
  } catch (const BooksError& error) {
    require(error.cause() == BooksError::Cause::Damaged, "a row is in order or damaged");
  }
  sqlite3_exec(stranger(), "DELETE FROM job", nullptr, nullptr, nullptr);
}

struct Undone {};

void askJournal(std::string_view text) {
  const std::filesystem::path file = folder() / "sales.jsonl";
  std::ofstream(file, std::ios::binary) << text;
  try {
    books().together([&] {
      readOldJournal(books(), file);
      const std::size_t count = books().latest(10000).size();
      books().remember("journal " + file.string(), "");
      readOldJournal(books(), file);
      require(books().latest(10000).size() == count, "a journal is read once");
      ask();
      throw Undone();
    });
  } catch (const Undone&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  books();
  const std::string_view text = fuzz::textOf(data, size);
  if (text.starts_with('r')) askRow(text.substr(1));
  if (text.starts_with('j')) askJournal(text.substr(1));
  return 0;
}
