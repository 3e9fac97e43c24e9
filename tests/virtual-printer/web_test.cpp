// What the web page is built from, without a browser: addresses, and what a late page is told.
#include <gtest/gtest.h>

#include <thread>

#include "base/system/address.h"
#include "bench.h"
#include "virtual-printer/line/inbox.h"
#include "virtual-printer/web/feed.h"
#include "virtual-printer/web/line_rows.h"
#include "virtual-printer/web/sheets.h"
#include "virtual-printer/web/state_json.h"

namespace virtual_printer::web_test {

using namespace std::chrono_literals;
using zentaro::system::parseAddress;

TEST(Web, AddressesAreReadOrRefused) {
  const std::pair<const char*, const char*> good[]{{"80", "127.0.0.1:80"},
                                                   {"0.0.0.0:0", "0.0.0.0:0"},
                                                   {"caja-1:65535", "caja-1:65535"},
                                                   {"[::1]:8080", "[::1]:8080"}};
  for (const auto& [text, expected] : good)
    EXPECT_EQ(authority(parseAddress("--web", text)), expected) << text;
  for (const char* bad : {"", "x", "-1", "65536", "80x", ":80", "host:", "[]:80", "::1:80", "1.2.3.4"})
    EXPECT_THROW(parseAddress("--web", bad), std::runtime_error) << bad;
}

TEST(Web, ALatePageIsToldWhatStillHoldsAndNothingTwice) {
  Feed feed;
  feed.publish("state", 0, "old");
  feed.publish("row", 1, "first");
  feed.publish("state", 0, "new");
  feed.publish("row", 1, "first");
  const auto all = feed.after(0, 0ms);
  ASSERT_EQ(all.size(), 2U);
  EXPECT_EQ(all[0].json + all[1].json, "firstnew");
  EXPECT_TRUE(feed.after(all[1].number, 0ms).empty());
  for (int row = 2; row < 1100; ++row) feed.publish("row", row, std::string(row < 1090 ? 1 : 1'000'000, 'x'));
  const auto kept = feed.after(0, 0ms);
  EXPECT_EQ(kept.front().json, "new") << "the rows do not push out the state";
  EXPECT_EQ(kept.size(), 1U + 8U) << "not more rows, nor more bytes of them, than allowed";
}

// The last message of a topic, and of a key in it.
std::string told(Feed& feed, const std::string& topic, int key = -1) {
  std::string json = "nothing";
  for (const Feed::Message& message : feed.after(0, 0ms))
    if (message.topic == topic && (key < 0 || message.key == key)) json = message.json;
  return json;
}

TEST(Web, TheStateIsWhatTheBooksAndTheDocumentSay) {
  const struct {
    const char* said;
    std::vector<const char*> shown;
  } rows[] = {
      {"", {R"x("document":{"status":0,"phase":"none"},)x"}},
      {"5D 1|CALLE REAL; 40 Ana|V1|||||||; 42 Pan|2000|1250|1600|M; 42 Sal|1000|100|0|M; 44 |1000|T; A0",
       {R"x("status":1,"phase":"paying","title":"FACTURA 00000001","name":"Ana","rif":"V1","items":2,)x"
        R"x("net":"26,00","tax":"4,00","total":"30,00","paid":"10,00","unpaid":"20,00","change":"0,00"})x",
        R"x("slip":true,"header":["CALLE REAL","","","",""])x"}},
      {"44 |2500|T; 45 A", {R"x("status":4,"phase":"partial")x", R"x("unpaid":"0,00","change":"5,00")x"}},
      {"45 E; 40 ||||||D||; 42 Pan|1000|100|1600|m; 45 T; 40 ||||||||; 44 |0|C; 48; 4A",
       {R"x("sales":{"lines":[{"label":"E","base":"1,00","tax":""},)x"
        R"x({"label":"G (16,00%)","base":"25,00","tax":"4,00"}],"igtf":"0,00","total":"30,00"})x",
        R"x("discounts":"0,00","invoices":1,"creditNotes":1,"nonFiscals":1,"cancelled":1})x",
        R"x("memory":{"invoice":2,"creditNote":1,"nonFiscal":1,"z":0,"records":0})x"}},
      {"39 Z", {R"x("z":1,"records":1,"closedAt":"24-11-2026 15:04"})x"}},
  };
  bench::Till till;
  for (const auto& row : rows) {
    till.dialogue(row.said);
    const std::string state = stateJson(till.device.works());
    for (const char* json : row.shown) EXPECT_TRUE(bench::contains(state, json)) << json << "\n" << state;
  }
}

// Each command a row, each answer one of its own when it has gone out.
TEST(Web, TheLineIsListedRowByRow) {
  bench::Till till;
  Feed feed;
  LineRows rows{feed};
  const auto say = [&](const std::string& line) {
    till.events.clear();
    till.engine.receive(zentaro::testing::commandFrame('"', line), till.now);
    for (const Event& event : till.events) rows.happened(till.now, event);
    for (const Output& output : till.engine.due(till.now)) rows.sent(till.now, output);
  };
  till.faults.add(parsePlan("lose-answer on clock; bad-checksum on close-dnf"));
  for (const char* line : {"48", "42 Pan|1", "59", "4A"}) say(line);
  const struct {
    int row;
    const char* json;
  } expected[] = {
      {1, R"("way":"command","date":"24-11-2026","time":"15:04:00","ms":1000,"name":"open-dnf")"},
      {2, R"("fields":["00000001"],"printerStatus":"0000","fiscalStatus":"0004","outcome":"ok")"},
      {3, R"("fields":["Pan","1"],"printerStatus":"0000","fiscalStatus":"8004","outcome":"refused")"},
      {4, R"("way":"answer")"},
      {5,
       R"("name":"clock","bytes":"02 22 59 03 30 30 38 30","size":8,"exchange":3,"code":"59","sequence":34,)"
       R"("faults":["lose-answer on clock once"])"},
      {6, R"("way":"command")"},
      {7, R"("way":"answer")"},
      {7, R"("faults":["bad-checksum on close-dnf once"])"},
      {8, "nothing"},
  };
  for (const auto& row : expected)
    EXPECT_TRUE(bench::contains(told(feed, "row", row.row), row.json))
        << row.row << ": " << told(feed, "row", row.row);
  rows.sent({3s, bench::afternoon}, {3s, Output::Kind::Bytes, "x", 4});
  EXPECT_TRUE(bench::contains(told(feed, "row", 7), R"("ms":3000,)")) << "there when its last byte is";
  rows.happened(till.now, {EventKind::Noise, {}, "x"});
  EXPECT_TRUE(bench::contains(told(feed, "row", 8), R"("way":"noise")"));
}

TEST(Web, SheetsGrowAndAreDoneOneByOne) {
  Feed feed;
  Sheets sheets{feed};
  Roll roll;
  roll.watch(sheets);
  roll.print({{LineStyle::Plain, "UNO", {}, {}}});
  EXPECT_EQ(told(feed, "sheet"), "nothing") << "drawn when the loop says so";
  sheets.draw(0ms);
  EXPECT_TRUE(bench::contains(told(feed, "sheet"), R"({"id":1,"kind":"roll","title":"","done":false)"));
  roll.printApart({SheetKind::ChequeFace, "CHEQUE", {{LineStyle::Plain, "DOS", {}, {}}}});
  EXPECT_TRUE(
      bench::contains(told(feed, "sheet", 2), R"({"id":2,"kind":"cheque","title":"CHEQUE","done":true)"));
  roll.cut("FACTURA 1");
  EXPECT_TRUE(
      bench::contains(told(feed, "sheet", 1), R"({"id":1,"kind":"roll","title":"FACTURA 1","done":true)"));
  roll.print({{LineStyle::Plain, "TRES", {}, {}}});
  sheets.draw(0ms);
  EXPECT_TRUE(bench::contains(told(feed, "sheet", 3), R"("done":false)"));
  EXPECT_TRUE(bench::contains(told(feed, "sheet", 3), "TRES")) << told(feed, "sheet", 3);
  EXPECT_FALSE(bench::contains(told(feed, "sheet", 3), "UNO"));
}

TEST(Web, JobsAreDoneByTheLoopOrGivenUpAtItsEnd) {
  Inbox inbox;
  std::thread page{[&] {
    EXPECT_EQ(inbox.ask([] { return std::string{"done"}; }), "done");
    EXPECT_EQ(inbox.ask([] { return std::string{"too late"}; }), std::nullopt);
  }};
  WatchList waiting{{inbox.wake().handle()}};
  ASSERT_TRUE(waitFor(waiting, 10s));
  inbox.work();
  inbox.close();
  page.join();
}

}  // namespace virtual_printer::web_test
