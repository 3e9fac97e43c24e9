// What the web page is built from, without a browser: addresses, and what a late page is told.
#include <gtest/gtest.h>

#include <thread>

#include "virtual-printer/line/address.h"
#include "virtual-printer/line/inbox.h"
#include "virtual-printer/web/feed.h"

namespace virtual_printer::web_test {

using namespace std::chrono_literals;

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
