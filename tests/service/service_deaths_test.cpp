// The service killed, ended and without room, and printers that others use or that fail: each job has one end.
#include "service/service_fixture.h"

namespace zentaro::service::service_test {

// Killed while the printer is silent about one command; what it was doing is known at the next start.
TEST_F(Service, KilledAtAnyStepItPrintsAJobOnce) {
  printer("caja1");
  int number = 0;
  for (const char* step : {"serial", "closing", "open", "item", "subtotal", "payment", "close"}) {
    for (const char* how : {"delay=0.7", "lose-answer", "lose-command"}) {
      serve();
      const std::string id = "F-" + std::to_string(++number),
                        item = id + " " + step;  // 20 characters are printed
      ASSERT_TRUE(eventually([&] { return ask("GET /v1/printers/caja1").at("state") == "ready"; }));
      fault("caja1", std::string(how) + " on " + step);
      ASSERT_EQ(put(id, sale("caja1", item)).status, 202);
      std::this_thread::sleep_for(std::chrono::milliseconds{150 + number * 37 % 400});
      killService();
      clear("caja1");
      serve();
      Answered job = put(id, sale("caja1", item), 5);
      if (job.at("state") == "unknown" && std::string(step) == "open") {
        // Its number never came: nobody but a person ends a document that may be somebody else's.
        EXPECT_EQ(ask("GET /v1/printers/caja1?fresh=1").at("state"), "blocked") << item;
        EXPECT_EQ(ask("PUT /v1/jobs/" + id + "/finding", R"({"printed":true})").at("type"), "document-open")
            << item;
        killService();
        ASSERT_EQ(run("zentaro call --device " + file("caja1") + " CancelarComprobante").status, 0);
        serve();
      }
      job = put(id, sale("caja1", item), 30);
      EXPECT_TRUE(job.at("state") == "printed" || job.at("state") == "not-printed") << item << job.body;
      const int count = job.at("state") == "printed" ? 1 : 0;
      EXPECT_TRUE(eventually([&] { return papers("caja1", item) == count; })) << item << job.body;
      if (job.at("state") == "not-printed") {
        job = put(id, sale("caja1", item, R"("attempt":2,)"), 30);
        EXPECT_EQ(job.at("state"), "printed") << item << job.body;
        EXPECT_TRUE(eventually([&] { return papers("caja1", item) == 1; })) << item;
      }
      killService();
    }
  }
}

TEST_F(Service, WhatNobodyKnowsHoldsBackTheZUntilAPersonHasLooked) {
  printer("caja1");
  serve();
  fault("caja1", "delay=2 on close");
  put("F-1", sale("caja1", "Doubtful"));
  ASSERT_TRUE(
      eventually([&] { return folder.read("caja1.log").find("\"name\":\"close\"") != std::string::npos; }));
  killService();
  std::this_thread::sleep_for(2s);
  write("other.json", R"({"document":"invoice","lines":[{"description":"Other","price":10,"tax":16}],)"
                      R"("payments":[{"amount":20}]})");
  for (int count = 0; count < 2; ++count)
    ASSERT_EQ(run("ZENTARO_BOOKS=" + file("others.db") + " zentaro sale " + file("other.json") +
                  " --again --device " + file("caja1"))
                  .status,
              0);
  serve();
  EXPECT_TRUE(becomes("F-1", "unknown"));
  EXPECT_EQ(ask("GET /v1/printers/caja1?fresh=1").at("booksMiss"), "2") << "sold past these books";
  EXPECT_EQ(put("F-1", sale("caja1", "Doubtful", R"("attempt":2,)")).at("type"), "not-final");
  put("Z-1", closing("caja1", "Z"));
  EXPECT_TRUE(eventually([&] { return get("Z-1").at("cause").find("F-1") != std::string::npos; }));
  EXPECT_EQ(put("F-2", sale("caja1", "Next"), 30).at("state"), "printed") << "sales go on";
  EXPECT_EQ(get("Z-1").at("state"), "queued");
  EXPECT_EQ(ask("PUT /v1/jobs/F-1/finding", R"({"printed":true})").at("state"), "printed");
  EXPECT_EQ(ask("PUT /v1/jobs/F-1/finding", R"({"printed":false})").status, 409) << "what was found stays";
  EXPECT_EQ(get("Z-1", 30).at("state"), "printed");
  EXPECT_EQ(papers("caja1", "Doubtful"), 1);
}

TEST_F(Service, ASignalLetsTheSaleEndAndTheQueueWait) {
  printer("caja1");
  serve();
  fault("caja1", "delay=0.8 on item");
  put("F-1", sale("caja1", "First"));
  put("F-2", sale("caja1", "Second"));
  ASSERT_TRUE(becomes("F-1", "printing"));
  EXPECT_NE(metrics().find("\nzentaro_printer_ready{printer=\"caja1\"} 1\n"), std::string::npos)
      << "a printer that prints is ready";
  EXPECT_EQ(service->end(SIGTERM), 0);
  EXPECT_EQ(papers("caja1", "First") * 10 + papers("caja1", "Second"), 10);
  serve();
  EXPECT_EQ(get("F-1").at("state"), "printed") << get("F-1").body;
  EXPECT_EQ(get("F-2", 30).at("state"), "printed");
}

// The disk is full for the service alone, as long as it may write no byte.
TEST_F(Service, AFullDiskAcceptsNothingAndLetsNoSaleClose) {
  ::signal(SIGXFSZ, SIG_IGN);  // the service takes it over
  printer("caja1");
  serve();
  const auto room = [&](const char* bytes) {
    const testing::Ran ran =
        run("prlimit --pid " + std::to_string(service->id()) + " --fsize=" + bytes + ":");
    ASSERT_EQ(ran.status, 0) << ran.output;
  };
  ASSERT_EQ(put("F-1", sale("caja1", "First"), 30).at("state"), "printed");
  room("1");
  const Answered refused = put("F-2", sale("caja1", "Second"));
  EXPECT_EQ(std::to_string(refused.status) + " " + refused.at("type"), "503 books") << refused.body;
  EXPECT_EQ(put("F-1", sale("caja1", "First")).at("state"), "printed") << "what is known is answered";
  room("unlimited");
  EXPECT_EQ(get("F-2").status, 404);
  EXPECT_EQ(put("F-2", sale("caja1", "Second"), 30).at("state"), "printed") << "the same PUT again";

  fault("caja1", "delay=1 on item");
  put("F-3", sale("caja1", "Third"));
  ASSERT_TRUE(eventually([&] { return folder.read("caja1.log").find("Third") != std::string::npos; }));
  room("1");
  std::this_thread::sleep_for(8s);  // until it has given up to write the close
  clear("caja1");
  room("unlimited");
  EXPECT_TRUE(becomes("F-3", "not-printed")) << get("F-3").body;
  EXPECT_EQ(put("F-3", sale("caja1", "Third", R"("attempt":2,)"), 30).at("state"), "printed");
  EXPECT_EQ(papers("caja1", "First") * 100 + papers("caja1", "Second") * 10 + papers("caja1", "Third"), 111);
}

// What a printer does by itself, or another program did on it, is seen in its counters.
TEST_F(Service, APrinterIsBelievedAndNotTheConnection) {
  printer("caja1");
  serve();
  ASSERT_EQ(put("F-1", sale("caja1", "First"), 30).at("state"), "printed");
  ASSERT_EQ(service->end(SIGTERM), 0);
  write("other.json", R"({"document":"invoice","lines":[{"description":"Other","price":10,"tax":16}],)"
                      R"("payments":[{"amount":20}]})");
  const std::string byHand = "zentaro sale " + file("other.json") + " --device " + file("caja1");
  std::filesystem::create_directory(file("own"));
  for (int count = 0; count < 2; ++count)
    ASSERT_EQ(run("env ZENTARO_BOOKS=" + file("own/b.db") + " " + byHand + " --again").status, 0);
  serve();
  EXPECT_TRUE(eventually([&] { return ask("GET /v1/printers/caja1").at("booksMiss") == "2"; }))
      << "restored books, or another program";

  fault("caja1", "lose-answer on closing");
  const Answered z = put("Z-1", closing("caja1", "Z"), 30);
  EXPECT_EQ(z.at("state") + " " + z.at("number") + " " + z.at("figures"), "printed 1 null") << z.body;
  clear("caja1");

  fault("caja1", "delay=1.5 on item");
  put("F-2", sale("caja1", "Other"));
  ASSERT_TRUE(becomes("F-2", "printing"));
  const testing::Ran busy = run(byHand + " --id F-2");
  EXPECT_EQ(busy.status, 3) << busy.output;
  EXPECT_EQ(get("F-2", 30).at("state"), "printed");
  clear("caja1");

  fault("caja1", "paper-out on item");
  EXPECT_EQ(put("F-3", sale("caja1", "Torn"), 0).status, 202);
  EXPECT_TRUE(becomes("F-3", "unknown")) << "the printer does not cancel either";
  EXPECT_EQ(put("F-4", sale("caja1", "Behind", R"("patience":2,)"), 20).at("verdict"), "expired");
  clear("caja1");
  EXPECT_EQ(get("F-3", 30).at("state"), "not-printed") << "ended by itself when there is paper";

  std::filesystem::remove(file("caja1"));  // else somebody's next device may have its name
  printers.at("caja1").end(SIGKILL);
  EXPECT_EQ(put("F-5", sale("caja1", "Night", R"("patience":2,)"), 60).at("verdict"), "expired");
  printers.erase("caja1");
  printer("caja1");
  EXPECT_EQ(put("F-6", sale("caja1", "Morning"), 60).at("state"), "printed");
  EXPECT_EQ(papers("caja1", "Torn") + papers("caja1", "Behind") + papers("caja1", "Night"), 0);
}

}  // namespace zentaro::service::service_test
