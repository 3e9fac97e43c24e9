// The books by themselves: what each call makes of a job, who may begin it, and books that are not in order.
#include "till/books/books.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <future>

#include "support/scratch.h"

namespace zentaro::till::books_test {

using namespace std::chrono_literals;

Order order(const std::string& id, const std::string& owner = "service") {
  Order made;
  made.id = id;
  made.owner = owner;
  made.printer = "caja1";
  made.digest = "2:d";
  made.body = "{}";
  made.net = 1000;
  return made;
}
Evidence evidence() { return {"A1", 7, 5000, 3}; }

class BooksFile : public ::testing::Test {
 protected:
  std::string path() const { return folder_ / "books.db"; }

  // A job on its way: "" is not in the books, "lines" and "close" are printing.
  static Job at(Books& books, const std::string& stage, const std::string& id = "K") {
    Job job;
    job.id = id;
    if (stage.empty()) return job;
    job = *books.put(order(id));
    if (stage == "queued") return job;
    EXPECT_TRUE(books.begin(job, evidence()));
    if (stage == "open") return job;
    books.opened(job, 8);
    if (stage == "lines") return job;
    books.turn(job, Turn::Close);
    if (stage == "printed") books.finish(job, {State::Printed, "printed", 8});
    if (stage == "not-printed") books.finish(job, {State::NotPrinted, "not-printed"});
    if (stage == "unknown") books.finish(job, {State::Unknown, "unknown"});
    return *books.at(job.key);
  }

  testing::Scratch folder_;
};

TEST_F(BooksFile, TakeAJobFromStateToStateAndNowhereElse) {
  using Call = std::function<bool(Books&, const Job&)>;  // the job's id is in the books, or to be put there
  const std::pair<const char*, Call> calls[] = {
      {"put", [](Books& b, const Job& j) { return b.put(order(j.id)).has_value(); }},
      {"open", [](Books& b, const Job& j) { return b.open(order(j.id, "sale"), evidence()).has_value(); }},
      {"begin", [](Books& b, const Job& j) { return b.begin(j, evidence()); }},
      {"another begins", [](Books& b, Job j) { return j.owner = "sale", b.begin(j, evidence()); }},
      {"requeue", [](Books& b, const Job& j) { return b.requeue(j, "paper"), true; }},
      {"opened", [](Books& b, const Job& j) { return b.opened(j, 8), true; }},
      {"close", [](Books& b, const Job& j) { return b.turn(j, Turn::Close), true; }},
      {"cancel", [](Books& b, const Job& j) { return b.turn(j, Turn::Cancel), true; }},
      {"withdraw", [](Books& b, const Job& j) { return b.withdraw(j.id, "withdrawn", ""); }},
      {"finding", [](Books& b, const Job& j) { return b.finding(j, true); }},
      {"not printed",
       [](Books& b, const Job& j) {
         return b.finish(j, {State::NotPrinted, "not-printed"});
       }},
      {"printed",
       [](Books& b, const Job& j) {
         return b.finish(j, {State::Printed, "printed"});
       }},
  };
  const std::pair<const char*, const char*> rows[] = {
      {"", "put open"},
      {"queued", "begin withdraw printed"},
      {"open", "requeue opened close cancel finding 'not printed' printed"},
      {"lines", "opened close cancel finding 'not printed' printed"},
      {"unknown", "cancel finding 'not printed' printed"},
      {"printed", "printed"},
      {"not-printed", "put open printed"},
  };
  Books books(path());
  int tried = 0;
  for (const auto& [stage, allowed] : rows)
    for (const auto& [name, call] : calls) {
      Job job = at(books, stage, "K" + std::to_string(++tried));
      const std::int64_t revision = books.revision();
      bool isDone = false;
      try {
        isDone = call(books, job);
      } catch (const BooksError& error) {
        EXPECT_EQ(error.cause(), BooksError::Cause::Settled);
      }
      const std::string word =
          std::string(name).find(' ') == std::string::npos ? name : "'" + std::string(name) + "'";
      const bool isAllowed = (" " + std::string(allowed) + " ").find(" " + word + " ") != std::string::npos;
      EXPECT_EQ(isDone, isAllowed) << stage << ": " << name;
      EXPECT_TRUE(isDone || books.revision() == revision) << stage << ": " << name;
    }
}

TEST_F(BooksFile, KeepWhatWasWantedAndWhatCameOfEachAttempt) {
  {
    Books books(path());
    const Job job = at(books, "not-printed");
    EXPECT_EQ(job.number, 8);
    EXPECT_TRUE(job.reachedClose);
    Order corrected = order("K", "sale");
    corrected.digest = "2:e";
    const Job next = *books.open(corrected, {"A1", 8, 5000, {}});
    EXPECT_EQ(next.attempt, 2);
    EXPECT_THROW(books.turn(job, Turn::Close), BooksError) << "an earlier attempt";
    books.finish(next, {State::Printed, "printed", 9, "{}", "why"});
  }
  const Books again(path());
  const Job job = *again.find("K");
  EXPECT_EQ(job.state, State::Printed);
  EXPECT_EQ(job.digest, "2:e");
  EXPECT_EQ(job.before.lastZ, std::nullopt);
  EXPECT_EQ(job.before.dayAmount, 5000);
  EXPECT_EQ(job.number, 9);
  EXPECT_EQ(job.cause, "why");
  Job other;
  other.before.machine = "A1";
  EXPECT_EQ(again.otherHolder(other, 9), State::Printed);
  EXPECT_EQ(again.otherHolder(other, 8), State::Unknown) << "an attempt has it that was not printed";
  EXPECT_EQ(again.otherHolder(other, 7), std::nullopt);
  EXPECT_EQ(again.otherHolder(job, 9), std::nullopt) << "its own";
  other.before.machine = "B1";
  EXPECT_EQ(again.otherHolder(other, 9), std::nullopt);
  other.before.machine = "A1";
  other.kind = Kind::CreditNote;
  EXPECT_EQ(again.otherHolder(other, 9), std::nullopt);
  EXPECT_EQ(again.highestNumber("A1", Kind::Invoice), 9);
  Books anew(path());
  EXPECT_EQ(anew.otherHolder(*anew.open(order("L", "sale"), {"A1", 8, 5000, {}}), 9), std::nullopt)
      << "printed before this job began, by a printer whose numbers began anew since";
}

TEST_F(BooksFile, ListWhatIsOpenAndWhatChanged) {
  Books books(path());
  const Job printed = at(books, "printed", "P"), unknown = at(books, "unknown", "U"),
            lines = at(books, "lines", "L");
  at(books, "queued", "Q");
  Job told = at(books, "printed", "T");
  books.told(told);
  const auto ids = [](const std::vector<Job>& jobs) {
    std::string text;
    for (const Job& job : jobs) text += job.id;
    return text;
  };
  EXPECT_EQ(ids(books.changedAfter(0, {})), "PULQT");
  EXPECT_EQ(ids(books.changedAfter(unknown.revision, {})), "LQT");
  EXPECT_EQ(ids(books.changedAfter(0, {"caja1", State::Unknown})), "U");
  EXPECT_EQ(ids(books.changedAfter(0, {"caja2", {}})), "");
  EXPECT_EQ(ids(books.changedAfter(0, {}, 2)), "PU");
  EXPECT_EQ(ids(books.queued("service", "caja1")), "Q");
  EXPECT_EQ(ids(books.queued("sale", "caja1")), "");
  EXPECT_EQ(ids(books.unsettled("A1")), "UL");
  EXPECT_EQ(ids(books.unsettled("B1")), "");
  EXPECT_EQ(ids(books.openWithDigest("2:d", "1:d")), "PUL") << "told is no longer open";
  EXPECT_EQ(ids(books.openWithDigest("2:x", "1:d")), "");
  EXPECT_EQ(ids(books.latest(2)), "QT");
  books.finish(unknown, {.state = State::Unknown, .verdict = "unknown", .isBeyondCounters = true});
  EXPECT_EQ(ids(books.judgeable("A1")), "L");
  books.waits(*books.find("Q"), "paper");
  EXPECT_EQ(ids(books.changedAfter(told.revision, {})), "UQ");
  const std::int64_t revision = books.revision();
  books.waits(*books.find("Q"), "paper");
  EXPECT_EQ(books.revision(), revision) << "the same cause once more";
  EXPECT_EQ(books.at(printed.key)->body, "{}");
  books.blankBodies(printed.ended + 1, 100);
  EXPECT_EQ(books.at(printed.key)->body, "");
  EXPECT_EQ(books.at(lines.key)->body, "{}") << "it may be printed yet";
  const Moment begun = books.at(lines.key)->begun;
  EXPECT_EQ(ids(books.begunBetween(begun, begun)), "") << "the end is the next day's";
  EXPECT_TRUE(ids(books.begunBetween(begun, begun + 1)).find('L') != std::string::npos);
}

TEST_F(BooksFile, LetOneOfManyBeginAJob) {
  Books(path()).put(order("K"));
  std::vector<std::future<int>> racing;
  for (int racer = 0; racer < 8; ++racer)
    racing.push_back(std::async(std::launch::async, [this, racer] {
      Books books(path());
      int won = 0;
      for (int round = 0; round < 10; ++round)
        won += books.open(order("R" + std::to_string(round), "sale" + std::to_string(racer)), evidence())
                   .has_value();
      return won + 100 * (books.begin(*books.find("K"), evidence()) ? 1 : 0);
    }));
  int won = 0;
  for (auto& racer : racing) won += racer.get();
  EXPECT_EQ(won, 110);
}

TEST_F(BooksFile, AreOneTransactionOrNone) {
  Books books(path());
  EXPECT_THROW(books.together([&] {
    books.put(order("K"));
    throw std::runtime_error("the caller's");
  }),
               std::runtime_error);
  EXPECT_FALSE(books.find("K"));
  Books another(path());
  const std::int64_t version = books.dataVersion();
  another.put(order("K"));
  EXPECT_NE(books.dataVersion(), version);
}

TEST_F(BooksFile, SayWhatIsWrongWithThem) {
  const auto junk = [this](const std::string& text) { folder_.write("books.db", text); };
  const auto another = [this](const char* sql) {
    sqlite3* other = nullptr;
    sqlite3_open(path().c_str(), &other);
    EXPECT_EQ(sqlite3_exec(other, sql, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(other);
  };
  struct {
    const char* name;
    std::function<void()> prepare;
    BooksError::Cause cause;
    const char* says;
  } const rows[] = {
      {"junk", [&] { junk(std::string(5000, 'x')); }, BooksError::Cause::Damaged, "put the last copy back"},
      {"a fifo", [&] { ::mkfifo(path().c_str(), 0600); }, BooksError::Cause::Unusable, "ZENTARO_BOOKS"},
      {"a folder", [&] { std::filesystem::create_directory(path()); }, BooksError::Cause::Unusable,
       "not a file"},
      {"a link to nowhere", [&] { std::filesystem::create_symlink("/nowhere/books", path()); },
       BooksError::Cause::Unusable, "not a file"},
      {"another's", [&] { another("CREATE TABLE t(x)"); }, BooksError::Cause::Unusable, "another program"},
      {"a newer version", [&] { Books{path()}, another("PRAGMA user_version = 2"); },
       BooksError::Cause::Unusable, "newer zentaro"},
      {"lost, but for its log", [&] { junk(""), folder_.write("books.db-wal", "log"); },
       BooksError::Cause::Damaged, "its log is not"},
      {"a state that is none",
       [&] { Books(path()).put(order("K")), another("UPDATE job SET state = 'sold'"); },
       BooksError::Cause::Damaged, "\"sold\""},
      {"numbers of an attacker",
       [&] { Books(path()).put(order("K")), another("UPDATE job SET before_day = -9223372036854775808"); },
       BooksError::Cause::Damaged, "-9223372036854775808"},
  };
  for (const auto& row : rows) {
    std::filesystem::remove_all(path());
    std::filesystem::remove(path() + "-wal");
    row.prepare();
    try {
      Books(path()).find("K");
      ADD_FAILURE() << row.name;
    } catch (const BooksError& error) {
      EXPECT_EQ(error.cause(), row.cause) << row.name << ": " << error.what();
      EXPECT_NE(std::string(error.what()).find(row.says), std::string::npos)
          << row.name << ": " << error.what();
    }
  }
}

TEST_F(BooksFile, NoticeThatTheyWereRemovedOrReplaced) {
  Books books(path());
  const Job job = at(books, "queued");
  std::filesystem::rename(path(), path() + ".old");
  EXPECT_THROW(books.begin(job, evidence()), BooksError);
  EXPECT_THROW(Books{path()}, BooksError) << "its log is still there";
  folder_.write("books.db", "");
  EXPECT_THROW(books.put(order("L")), BooksError);
  std::filesystem::rename(path() + ".old", path());
  EXPECT_TRUE(books.begin(job, evidence()));
}

TEST_F(BooksFile, FindAFlippedByte) {
  {
    Books books(path());
    for (int i = 0; i < 200; ++i) books.put(order("K" + std::to_string(i)));
    books.check();
  }
  std::string bytes = folder_.read("books.db");
  ASSERT_GT(bytes.size(), 20000U);
  bytes.replace(12288, 64, std::string(64, '\xFF'));
  folder_.write("books.db", bytes);
  EXPECT_THROW(Books(path()).check(), BooksError);
}

TEST_F(BooksFile, WaitForAnothersLockAndSaySo) {
  Books holder(path());
  int told = 0;
  Books books(path(), {1200ms, [&] { ++told; }});
  holder.together([&] {
    EXPECT_THROW(books.put(order("K")), BooksError);
    EXPECT_EQ(told, 1);
    books.patience({100ms, [&] { ++told; }});
    EXPECT_THROW(books.put(order("K")), BooksError);
    EXPECT_EQ(books.find("K"), std::nullopt) << "reading waits for nobody";
  });
  EXPECT_EQ(told, 1) << "not when it takes less than a second";
  EXPECT_TRUE(books.put(order("K")));
}

TEST_F(BooksFile, StayAsTheyWereOnAFullDisk) {
  Books books(path());
  const Job job = at(books, "lines");
  {
    const testing::SizeLimit limit(1);
    EXPECT_THROW(books.turn(job, Turn::Close), BooksError);
    EXPECT_THROW(books.put(order("L")), BooksError);
  }
  EXPECT_FALSE(books.at(job.key)->reachedClose);
  books.turn(job, Turn::Close);
  EXPECT_TRUE(books.at(job.key)->reachedClose);
}

TEST_F(BooksFile, AreForAllAccountsOfAFolderThatHandsItsGroupDown) {
  const std::filesystem::path shared = folder_ / "shared";
  for (const mode_t umask : {022U, 077U}) {
    std::filesystem::remove_all(shared);
    std::filesystem::create_directory(shared);
    ASSERT_EQ(::chmod(shared.c_str(), 02770), 0);
    const mode_t before = ::umask(umask);
    Books books(shared / "books.db");
    books.put(order("K"));
    ::umask(before);
    for (const char* file : {"books.db", "books.db-wal", "books.db-shm"}) {
      struct stat status {};
      ASSERT_EQ(::stat((shared / file).c_str(), &status), 0);
      EXPECT_EQ(status.st_mode & 0777, 0660U) << file << " with umask " << umask;
    }
  }
}

TEST_F(BooksFile, HaveTheirPlace) {
  struct {
    const char *books, *state, *path;
  } const rows[] = {
      {"/srv/b.db", "/var/state", "/srv/b.db"},
      {"", "/var/state", "/var/state/zentaro/books.db"},
      {"", "relative", "/home/ana/.local/state/zentaro/books.db"},
  };
  ::setenv("HOME", "/home/ana", 1);
  for (const auto& row : rows) {
    ::setenv("ZENTARO_BOOKS", row.books, 1);
    ::setenv("XDG_STATE_HOME", row.state, 1);
    if (std::filesystem::is_directory("/var/lib/zentaro") && *row.books == '\0') continue;
    EXPECT_EQ(booksPath(), row.path);
  }
}

TEST(JobId, IsOfItsAlphabet) {
  for (const char* good : {"F-1", "a", "2024:A~b_c.d-e"}) EXPECT_TRUE(isJobId(good)) << good;
  EXPECT_TRUE(isJobId(std::string(128, 'x')));
  EXPECT_FALSE(isJobId(std::string(129, 'x')));
  for (const char* bad : {"", "\xd1-1", "a b", "a/b", "a%20", "\n"}) EXPECT_FALSE(isJobId(bad)) << bad;
}

}  // namespace zentaro::till::books_test
