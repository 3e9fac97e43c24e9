// `zentaro sale` and the books at their worst: clocks that lie, books that are not in order, a disk that is full in the
// middle of a sale, programs that want the same at once.
#include <sys/stat.h>

#include <future>

#include "base/files/json.h"
#include "support/process.h"
#include "tools/connection/virtual_printer.h"

namespace zentaro::tools::books_program_test {

using testing::contains;
using testing::Ran;

class BooksProgram : public testing::Shell {
 protected:
  BooksProgram() { writeSale(); }

  std::string sale(const std::string& options, const std::string& books = "books.db") const {
    return "XDG_STATE_HOME=" + file("state") + " ZENTARO_BOOKS=" + file(books) + " zentaro sale " +
           file("sale.json") + " --timeout 2 --device " + printer_.device() + " " + options;
  }
  int invoices() const {
    const std::string state = folder.read("printer.json");
    return state.empty() ? 0 : Json::parse(state).at("day").at("invoices").get<int>();
  }

  VirtualPrinter printer_{{"--state", file("printer.json")}};
};

TEST_F(BooksProgram, ForgetNothingWhateverTheClockSays) {
  int printed = 0;
  for (const char* years : {"-56", "-16", "75", "0"}) {
    const std::string at = "ASAN_OPTIONS=verify_asan_link_order=0 LD_PRELOAD=" SHIFTED_CLOCK_LIBRARY
                           " SHIFTED_CLOCK=$((31556952 * " +
                           std::string(years) + ")) ";
    const std::string id = " --id K" + std::string(years);
    EXPECT_EQ(run(at + sale(id)).status, 0) << years;
    EXPECT_EQ(invoices(), ++printed) << years;
    for (const std::string& then : {std::string(), at}) {
      const Ran again = run(then + sale(id));
      EXPECT_TRUE(again.status == 0 && contains(again.output, "ALREADY PRINTED")) << years << again.output;
    }
    EXPECT_EQ(invoices(), printed) << years;
  }
  const Ran listed = run("ZENTARO_BOOKS=" + file("books.db") + " zentaro sale --journal");
  EXPECT_TRUE(contains(listed.output, "1970-")) << "the clock was not shifted: " << listed.output;
}

TEST_F(BooksProgram, TakeOnlyIdsThatEverybodyReadsAlike) {
  for (const char* id : {"\"$(printf '\\321-1')\"", "'a b'", "a/b", "''", "\"$(printf %0129d 0)\""}) {
    const Ran ran = run(sale("--id " + std::string(id)));
    EXPECT_EQ(ran.status, 2) << id << ran.output;
  }
  EXPECT_EQ(invoices(), 0);
}

TEST_F(BooksProgram, ThatAreNotInOrderStopWhatHasAnIdAndWarnWhatHasNone) {
  struct {
    const char* name;
    std::function<void(const std::string& path)> prepare;
    const char* says;
  } const rows[] = {
      {"junk", [&](const std::string&) { write("junk", std::string(9000, 'x')); }, "damaged"},
      {"fifo", [](const std::string& path) { ::mkfifo(path.c_str(), 0600); }, "cannot be used"},
      {"folder", [](const std::string& path) { ::mkdir(path.c_str(), 0700); }, "cannot be used"},
  };
  int printed = 0;
  for (const auto& row : rows) {
    row.prepare(file(row.name));
    const Ran kept = run(sale("--id K", row.name));
    EXPECT_EQ(kept.status, 2) << row.name << kept.output;
    EXPECT_TRUE(contains(kept.output, row.says)) << row.name << kept.output;
    EXPECT_EQ(invoices(), printed) << row.name;
    const Ran warned = run(sale("", row.name));
    EXPECT_EQ(warned.status, 0) << row.name << warned.output;
    EXPECT_TRUE(contains(warned.output, "warning: ")) << row.name << warned.output;
    EXPECT_EQ(invoices(), ++printed) << row.name;
  }
}

TEST_F(BooksProgram, SayTheTruthWhateverTheDiskStillTakes) {
  EXPECT_EQ(run(sale("--id first")).status, 0);
  int printed = 1, refused = 0, named = 0;
  for (int blocks = 4; blocks < 140; blocks += 8) {
    const std::string id = "--id F" + std::to_string(blocks);
    const Ran ran = run("(trap '' XFSZ; ulimit -f " + std::to_string(blocks) + "; " + sale(id) + ")");
    printed += ran.status == 0;
    refused += ran.status != 0;
    named += contains(ran.output, "limit on the size of a file");
    EXPECT_FALSE(contains(ran.output, "dialout")) << blocks << ran.output;
    EXPECT_EQ(invoices(), printed) << blocks << ran.output;
    EXPECT_EQ(run(sale(id)).status, 0) << blocks;
    printed += ran.status != 0;
    EXPECT_EQ(invoices(), printed) << blocks << ran.output;
  }
  EXPECT_GT(refused, 2);
  EXPECT_GT(named, 2);
}

TEST_F(BooksProgram, LetOneOfManyPrintAnId) {
  std::vector<std::future<Ran>> racing;
  for (int racer = 0; racer < 6; ++racer)
    racing.push_back(std::async(std::launch::async, [this] { return run(sale("--id K")); }));
  int printed = 0;
  for (auto& racer : racing) {
    const Ran ran = racer.get();
    printed += contains(ran.output, "\nPRINTED. ");
    EXPECT_TRUE(ran.status == 0 || ran.status == 2 || ran.status == 3) << ran.output;
  }
  EXPECT_EQ(printed, 1);
  EXPECT_EQ(invoices(), 1);
}

TEST_F(BooksProgram, KnowWhatAnOldJournalSays) {
  writeOldJournal();
  const Ran ran = run(sale("--id K"));
  EXPECT_TRUE(contains(ran.output, "\"K\"")) << ran.output;
  EXPECT_EQ(invoices(), 0) << ran.output;
}

}  // namespace zentaro::tools::books_program_test
