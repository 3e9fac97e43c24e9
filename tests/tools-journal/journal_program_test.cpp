// `zentaro sale` killed at every step on a slow line, and what the journal says then.
#include <future>

#include "base/files/json.h"
#include "support/process.h"
#include "tools/connection/virtual_printer.h"

namespace zentaro::tools::journal_program_test {

using testing::contains;
using testing::Ran;

class JournalProgram : public testing::Shell {
 protected:
  JournalProgram() { writeSale(); }

  std::string sale(const std::string& name, const VirtualPrinter& printer, const std::string& options) const {
    return "ZENTARO_BOOKS=" + file(name) + "/books.db zentaro sale " + file("sale.json") +
           " --timeout 2 --device " + printer.device() + " " + options;
  }
  int invoices(const std::string& name) const {
    const std::string state = folder.read(name + ".json");
    return state.empty() ? 0 : Json::parse(state).at("day").at("invoices").get<int>();
  }

  void killAfter(const std::string& seconds, const std::string& key) const {
    const std::string name = "after" + seconds + key.substr(0, 1);
    const VirtualPrinter printer({"--realtime", "--state", file(name + ".json")});
    const std::string command = sale(name, printer, key);
    const Ran killed = run(command + " & p=$!; sleep " + seconds + "; kill -9 $p; wait $p");
    if (killed.status == 0 || contains(killed.output, "PRINTED. ")) return;  // it was done before
    Ran next = run(command);
    if (next.status == 5) {  // its document was open, and nobody had its number yet
      EXPECT_TRUE(contains(next.output, "call --device " + printer.device() + " CancelarComprobante"))
          << next.output;
      EXPECT_EQ(run("zentaro call CancelarComprobante --device " + printer.device()).status, 0);
      next = run(command);
    }
    const bool isUntold = key.empty() && next.status == 6;
    EXPECT_TRUE(next.status == 0 || isUntold) << name << next.output;
    EXPECT_EQ(invoices(name), 1) << name << next.output;
    EXPECT_EQ(run(command + " --again").status, 0) << name;
    EXPECT_EQ(invoices(name), key.empty() ? 2 : 1) << name;
  }
};

TEST_F(JournalProgram, PrintsNothingTwiceWhateverIsKilled) {
  std::vector<std::future<void>> running;
  for (const char* seconds : {"0.2", "0.5", "0.8", "1.1", "1.4", "1.6", "1.8", "2"})
    for (const char* key : {"", "--id K"})
      running.push_back(std::async(std::launch::async, [=, this] { killAfter(seconds, key); }));
  for (auto& one : running) one.get();
}

TEST_F(JournalProgram, GoesByTheKeyAndByWhatThePaperShows) {
  const VirtualPrinter printer({"--state", file("books.json"), "--fault",
                                "lose-answer on close after 1; lose-answer on status after 5 always"});
  const auto on = [&](const std::string& options) { return run(sale("state", printer, options)); };
  EXPECT_EQ(on("--id A").status, 0);
  EXPECT_TRUE(contains(on("--id A").output, "ALREADY PRINTED. The sale \"A\" of "));
  EXPECT_EQ(on("--id U --give-up 1").status, 4) << "the answers to its close and to all that follows";

  EXPECT_EQ(on("--id U --resolve printed").status, 0);
  EXPECT_EQ(Json::parse(on("--id U --json").output).at("verdict"), "already-printed");
  EXPECT_EQ(invoices("books"), 2);
  const Ran listed = run("ZENTARO_BOOKS=" + file("state") + "/books.db zentaro sale --journal");
  EXPECT_TRUE(contains(listed.output, "printed     00000001          11.60  A  /")) << listed.output;
  const Ran json = run("ZENTARO_BOOKS=" + file("state") + "/books.db zentaro sale --journal --json");
  const Json jobs = Json::parse(json.output);
  ASSERT_EQ(jobs.size(), 2U) << json.output;
  EXPECT_EQ(jobs[0].at("id").get<std::string>() + jobs[1].at("id").get<std::string>(), "AU");
  EXPECT_EQ(jobs[0].at("state"), "printed");
  EXPECT_EQ(jobs[0].at("number"), 1);
  EXPECT_EQ(jobs[0].at("total"), "11.60");
  write("sale.json", R"({"document": "invoice", "lines": [{"description": "Pan", "price": 10, "tax": 0}],
    "payments": [{"amount": 10}]})");
  EXPECT_EQ(on("--id A").status, 2) << "another content";
}

TEST_F(JournalProgram, PrintsUnderAKeyOnlyWhatItCanKeep) {
  const VirtualPrinter printer;
  write("none", "");  // a file where the folder should be
  EXPECT_EQ(run(sale("none", printer, "--id A")).status, 2);
  const Ran warned = run(sale("none", printer, ""));
  EXPECT_EQ(warned.status, 0);
  EXPECT_TRUE(contains(warned.output, "warning: the books miss this sale: ")) << warned.output;
}

}  // namespace zentaro::tools::journal_program_test
