// The service with its printers, as its clients meet it: each id once on paper, whatever happens in between.
#include <gtest/gtest.h>

#include "service/shop.h"

namespace zentaro::service {
namespace {

using namespace std::chrono_literals;
using testing::Answered;
using testing::eventually;
using testing::HttpClient;
using testing::httpRequest;

class Service : public testing::Shop {
 protected:
  std::string metrics() const {
    HttpClient client{port};
    client.send(httpRequest("GET /metrics", "Authorization: Bearer " + token + "\r\n"));
    return client.receive(10s);
  }
  bool tells(const std::string& metric) const {
    return eventually([&] { return metrics().find("\n" + metric + "\n") != std::string::npos; });
  }
};

TEST_F(Service, PrintsAJobOnceHoweverOftenItIsAskedFor) {
  write("settings.ini", "[Config\\EPSONZT]\nTimeOutZT=2\nDebugZT=1\nDumpZT=" + file("trace") + "\n");
  printer("caja1");
  serve();
  const Answered first = put("F-1", sale("caja1"), 30);
  EXPECT_EQ(first.status, 200) << first.body;
  EXPECT_EQ(first.at("state") + " " + first.at("number") + " " + first.at("total") + " " + first.at("change"),
            "printed 1 11.60 8.40");
  struct Row {
    const char* what;
    std::string id, body;
    int status;
    std::string said;  // the state, or the problem's type
  };
  const Row rows[]{
      {"the same", "F-1", sale("caja1"), 200, "printed"},
      {"the same, written in Spanish", "F-1",
       R"({"printer":"caja1","sale":{"documento":"factura","renglones":[{"descripcion":"Arepa","precio":"10.00",
           "impuesto":16.00}],"pagos":[{"monto":20}]}})",
       200, "printed"},
      {"the next attempt of what was printed", "F-1", sale("caja1", "Arepa", R"("attempt":2,)"), 200,
       "printed"},
      {"other content", "F-1", sale("caja1", "Cachapa"), 409, "other-content"},
      {"another printer", "F-1", sale("caja2"), 409, "other-content"},
      {"a closing under its id", "F-1", testing::Shop::closing("caja1", "Z"), 409, "other-content"},
      {"a second attempt without a first", "F-2", sale("caja1", "Arepa", R"("attempt":2,)"), 409,
       "attempt-ahead"},
      {"no printer of ours", "F-2", sale("caja9"), 422, "not-in-order"},
      {"no document", "F-2", R"({"printer":"caja1"})", 422, "not-in-order"},
      {"a member that is none", "F-2", sale("caja1", "Arepa", R"("prio":1,)"), 422, "not-in-order"},
      {"patience of a day", "F-2", sale("caja1", "Arepa", R"("patience":86400,)"), 422, "not-in-order"},
      {"no JSON", "F-2", "{", 400, "no-json"},
      {"nested a thousand times", "F-2", std::string(1000, '['), 400, "no-json"},
      {"an id with a blank", "F%202", sale("caja1"), 400, "bad-id"},
      {"an id that is too long", std::string(129, 'F'), sale("caja1"), 400, "bad-id"},
  };
  for (const Row& row : rows) {
    const Answered answer = put(row.id, row.body);
    EXPECT_EQ(answer.status, row.status) << row.what << answer.body;
    EXPECT_EQ(answer.at(row.status < 300 ? "state" : "type"), row.said) << row.what;
    EXPECT_EQ(answer.status == 409 && row.id == "F-1", answer.at("job") != "(none)") << row.what;
  }
  EXPECT_EQ(papers("caja1", "Arepa"), 1);
  EXPECT_EQ(ask("GET /v1/jobs?search=Arepa").body["jobs"].size(), 1U) << "by what stands in the body alone";
  EXPECT_EQ(folder.read("trace"), "") << "a trace has no limit, and a service runs for years";
  EXPECT_EQ(ask("GET /v1/jobs?after=0").body["jobs"].size(), 1U) << "what was refused is not in the books";
}

TEST_F(Service, RightsAreKeptForEachToken) {
  printer("caja1");
  printer("caja2");
  serve({"--origin", "https://tienda.example"});
  ASSERT_EQ(put("F-1", sale("caja2"), 30).at("state"), "printed");
  const std::string all = token, seller = addToken("seller", "sell", "--only caja1"),
                    reader = addToken("reader", "read", "--only caja1");
  EXPECT_EQ(run("stat -c %a " + file("state/zentaro/tokens.json")).output, "600\n") << "the account's alone";
  struct Row {
    const char* what;
    std::string token, line, body;
    int status;
  };
  const std::string z = closing("caja1", "Z"), finding = R"({"printed":true})";
  const Row rows[]{
      {"no token", "", "GET /v1/printers", "", 401},
      {"a token that is none", "zt_1", "PUT /v1/jobs/F-2", sale("caja1"), 401},
      {"health needs none", "", "GET /health", "", 200},
      {"nor does the page", "", "GET /", "", 200},
      {"a seller cannot close", seller, "PUT /v1/jobs/Z-1", z, 403},
      {"nor read", seller, "GET /v1/jobs", "", 403},
      {"nor resolve", seller, "PUT /v1/jobs/F-1/finding", finding, 403},
      {"nor sell on another printer", seller, "PUT /v1/jobs/F-2", sale("caja2"), 403},
      {"nor force", seller, "PUT /v1/jobs/F-2", sale("caja1", "Arepa", R"("force":true,)"), 403},
      {"nor see another printer's job by its id", seller, "PUT /v1/jobs/F-1", sale("caja1"), 409},
      {"nor take it back", seller, "DELETE /v1/jobs/F-1", "", 404},
      {"a reader cannot sell", reader, "PUT /v1/jobs/F-2", sale("caja1"), 403},
      {"nor resolve", reader, "PUT /v1/jobs/F-1/finding", finding, 403},
      {"nor see another printer", reader, "GET /v1/printers/caja2", "", 404},
      {"nor its jobs", reader, "GET /v1/jobs/F-1", "", 404},
      {"nor its day", reader, "GET /v1/printers/caja2/day", "", 404},
      {"an address that is none", all, "GET /v1/nothing", "", 404},
      {"a method that is none", all, "POST /v1/jobs/F-1", "", 405},
      {"a wait beyond a minute", all, "GET /v1/jobs/F-1?wait=61", "", 400},
  };
  for (const Row& row : rows) {
    token = row.token;
    const Answered answer = ask(row.line, row.body);
    EXPECT_EQ(answer.status, row.status) << row.what << answer.body;
    EXPECT_EQ(answer.body.dump().find("caja2\",\"kind"), std::string::npos) << row.what << " shows the job";
  }
  token = reader;
  EXPECT_EQ(ask("GET /v1/printers").body["printers"].size(), 1U);
  EXPECT_EQ(ask("GET /v1/jobs").body["jobs"].size(), 0U);
  token = all;
  EXPECT_EQ(ask("GET /v1/printers", "", "Origin: https://evil.example\r\n").status, 403);
  const Answered asked = ask("OPTIONS /v1/jobs/F-1", "", "Origin: https://tienda.example\r\n");
  EXPECT_EQ(asked.status, 204);
  for (const char* header : {"Access-Control-Allow-Origin: https://tienda.example", "Vary: Origin"})
    EXPECT_NE(asked.head.find(header), std::string::npos) << header;
  EXPECT_NE(ask("POST /v1/jobs/F-1").head.find("Allow: PUT, GET, DELETE\r\n"), std::string::npos);
  EXPECT_EQ(
      ask("PUT /v1/jobs/F-3", sale("caja2"), "Content-Type: application/json; charset=utf-8\r\n").status,
      202);
  EXPECT_EQ(ask("PUT /v1/jobs/F-2", sale("caja1"), "Content-Type: text/plain\r\n").status, 415);
  EXPECT_EQ(run("zentaro serve token remove seller").status, 0);
  token = seller;
  EXPECT_EQ(ask("PUT /v1/jobs/F-2", sale("caja1")).status, 401)
      << "a token that was taken away counts no more";
  EXPECT_EQ(papers("caja1", "Arepa"), 0);
}

TEST_F(Service, WaitsWhileThePrinterRefusesTheOpeningAndNoLonger) {
  printer("caja1");
  serve();
  fault("caja1", "paper-out on open");
  const Answered late = put("F-1", sale("caja1", "Late", R"("patience":2,)"), 20);
  EXPECT_EQ(late.at("state") + " " + late.at("verdict"), "not-printed expired") << late.body;
  EXPECT_NE(late.at("cause").find("(ERROR 20 SIN PAPEL)"), std::string::npos)
      << "what it waited for" << late.body;
  EXPECT_NE(late.at("next").find("with attempt 2"), std::string::npos) << late.body;
  EXPECT_EQ(put("F-2", sale("caja1", "Soon"), 0).status, 202);
  EXPECT_TRUE(eventually([&] { return get("F-2").at("cause").find("ERROR") != std::string::npos; }));
  EXPECT_EQ(ask("GET /v1/printers/caja1").at("state"), "blocked");
  clear("caja1");
  fault("caja1", "delay=1 on item");
  EXPECT_TRUE(eventually([&] {
    const Answered now = ask("GET /v1/printers/caja1");
    return now.at("state") == "busy" && now.at("next") == "null";
  })) << "nobody is asked to put anything in order any more";
  EXPECT_EQ(get("F-2", 30).at("state"), "printed");
  EXPECT_NE(get("F-2").at("begun"), get("F-2").at("accepted"));
  EXPECT_EQ(put("F-1", sale("caja1", "Late"), 0).at("state"), "not-printed") << "a replay prints nothing";
  EXPECT_EQ(put("F-1", sale("caja1", "Mended", R"("attempt":2,)"), 30).at("state"), "printed");
  int seconds = 0;  // of those that were begun
  for (const Answered& job : {get("F-1"), get("F-2")})
    for (const auto& [moment, sign] : {std::pair{"begun", -1}, {"ended", 1}}) {
      const std::string text = job.at(moment);
      seconds += sign * (std::stoi(text.substr(11)) * 3600 + std::stoi(text.substr(14)) * 60 +
                         std::stoi(text.substr(17)));
    }
  EXPECT_TRUE(tells("zentaro_job_seconds_sum{printer=\"caja1\"} " + std::to_string(seconds))) << metrics();
  EXPECT_EQ(papers("caja1", "Late") * 100 + papers("caja1", "Soon") * 10 + papers("caja1", "Mended"), 11);
  fault("caja1", "paper-out on open");
  put("F-3", sale("caja1", "Gone"));
  EXPECT_TRUE(eventually([&] { return get("F-3").at("cause").find("ERROR") != std::string::npos; }));
  EXPECT_EQ(ask("DELETE /v1/jobs/F-3").at("verdict"), "withdrawn");
  clear("caja1");
  EXPECT_TRUE(eventually([&] { return ask("GET /v1/printers/caja1").at("state") == "ready"; }))
      << "what was withdrawn is waited for no more";
}

TEST_F(Service, TheZThatIsDueGoesBeforeTheSaleThatWaitsForIt) {
  printer("caja1");
  serve();
  ASSERT_EQ(put("F-0", sale("caja1"), 30).at("state"), "printed");
  fault("caja1", "day-change");
  put("F-1", sale("caja1"));
  EXPECT_TRUE(eventually([&] { return get("F-1").at("cause") != "null"; }));
  const Answered z = put("Z-1", closing("caja1", "Z"), 30);
  EXPECT_EQ(z.at("state") + " " + z.at("number"), "printed 1") << z.body;
  EXPECT_EQ(z.body["figures"]["sales"]["base1"], "10.00");
  EXPECT_EQ(get("F-1", 30).at("state"), "printed");
  EXPECT_EQ(put("Z-1", closing("caja1", "Z"), 30).at("number"), "1") << "the day is not closed twice";
}

TEST_F(Service, AJobInTheQueueCanBeWithdrawnAndTheQueueHasAnEnd) {
  printer("caja1");
  serve();
  fault("caja1", "cover-open on open");
  for (int number = 1; number <= 100; ++number)
    ASSERT_EQ(put("F-" + std::to_string(number), sale("caja1")).status, 202) << number;
  const Answered full = put("F-101", sale("caja1"));
  EXPECT_EQ(full.status, 429);
  EXPECT_EQ(put("F-7", sale("caja1")).status, 202) << "what is known is answered";
  EXPECT_EQ(get("F-101").status, 404);
  EXPECT_EQ(ask("DELETE /v1/jobs/F-7").at("verdict"), "withdrawn");
  EXPECT_EQ(ask("DELETE /v1/jobs/F-7").status, 200);
  ask("DELETE /v1/jobs/F-8");
  EXPECT_EQ(put("Z-1", closing("caja1", "Z")).status, 202);
  const std::string all = token;
  token = addToken("seller", "sell");
  EXPECT_EQ(ask("DELETE /v1/jobs/Z-1").status, 403) << "who may not close takes no closing back";
  token = all;
  ask("DELETE /v1/jobs/Z-1");
  EXPECT_TRUE(tells("zentaro_jobs_total{printer=\"caja1\",kind=\"Z\",verdict=\"withdrawn\"} 1"));
  EXPECT_EQ(metrics().find("zentaro_last_z_timestamp_seconds{"), std::string::npos) << "none was printed";
  for (int number = 1; number <= 100; ++number)
    if (number != 2) ask("DELETE /v1/jobs/F-" + std::to_string(number));
  clear("caja1");
  EXPECT_EQ(get("F-2", 30).at("state"), "printed");
  EXPECT_EQ(ask("DELETE /v1/jobs/F-2").status, 409);
  EXPECT_EQ(ask("GET /v1/jobs?latest=2").body["jobs"][0]["id"], "Z-1") << "the newest first";
  const Answered page = ask("GET /v1/jobs?after=0");
  EXPECT_EQ(page.body["jobs"].size(), 100U);
  EXPECT_EQ(ask("GET /v1/jobs?after=" + page.at("revision")).body["jobs"].size(), 1U) << "and what is left";
  EXPECT_EQ(papers("caja1", "Arepa"), 1);
}

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

TEST_F(Service, AStreamGoesOnWhereItStoppedAcrossARestart) {
  printer("caja1");
  serve();
  const auto stream = [&](const std::string& headers) {
    auto client = std::make_unique<HttpClient>(port);
    client->send(httpRequest("GET /v1/events", "Authorization: Bearer " + token + "\r\n" + headers));
    return client;
  };
  const auto live = stream("");
  live->receive(10s, "event: printer");
  put("F-1", sale("caja1"), 30);
  const std::string text = live->receive(10s, "\"state\":\"printed\"");
  EXPECT_NE(text.find("\"state\":\"printed\""), std::string::npos) << text;
  const std::string id = text.substr(text.rfind("\nid: ") + 5,
                                     text.find('\n', text.rfind("\nid: ") + 5) - text.rfind("\nid: ") - 5);
  killService();
  serve();
  put("F-2", sale("caja1", "Later"), 30);
  const std::string resumed = stream("Last-Event-ID: " + id + "\r\n")->receive(10s, "F-2");
  EXPECT_NE(resumed.find("F-2"), std::string::npos);
  EXPECT_EQ(resumed.find("\"F-1\""), std::string::npos) << "nothing is told twice";
  const std::string all = token;
  token = addToken("guest", "read");
  const auto guest = stream("");
  guest->receive(10s, "event: printer");
  ASSERT_EQ(run("zentaro serve token remove guest").status, 0);
  token = all;
  put("F-3", sale("caja1", "Secret"), 30);
  EXPECT_EQ(guest->receivedUntilClosed().find("F-3"), std::string::npos) << "a token that was taken away";
}

// As their readers run them, with a lost answer, and a second time as after a crash; then all at once on a printer
// that takes its time.
TEST_F(Service, TheExamplesSellOnceInEachLanguage) {
  printer("caja1");
  printer("slow", {}, {"--realtime"});
  serve();
  const std::string compiled = file("Sell.exe"), inExamples = "cd " ZENTARO_SOURCES "/examples/web; ";
  run(inExamples + "mcs -r:System.Net.Http -r:System.Runtime.Serialization -out:" + compiled + " Sell.cs");
  const std::string at = " http://127.0.0.1:" + std::to_string(port);
  std::string missing, together = inExamples;
  int languages = 0;
  for (const std::string& words :
       {std::string("python3 sell.py"), std::string("node sell.mjs"), std::string("php sell.php"),
        std::string("bash sell.sh"), "mono " + compiled}) {
    const std::string interpreter = words.substr(0, words.find(' '));
    const bool isThere = interpreter == "mono" ? run("test -e " + compiled).status == 0
                                               : run("command -v " + interpreter).status == 0;
    if (!isThere) {
      missing += " " + interpreter;
      continue;
    }
    fault("caja1", "lose-answer on close");
    const std::string sells = "ZENTARO_TOKEN=" + token + " " + words + at;
    const testing::Ran first = run(inExamples + sells + " caja1 F-" + interpreter),
                       again = run(inExamples + sells + " caja1 F-" + interpreter);
    EXPECT_EQ(first.output.substr(0, 8), "printed ") << words << first.output;
    EXPECT_EQ(again.output, first.output) << words;
    together += sells + " slow S-" + interpreter + " & ";
    ++languages;
  }
  const std::string all = run(together + "wait").output;
  for (int number = 1; number <= languages; ++number)
    EXPECT_NE(all.find("printed " + std::to_string(number) + ", total 23.20"), std::string::npos) << all;
  if (!missing.empty()) GTEST_SKIP() << "the rest; not installed:" << missing;
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

TEST_F(Service, OneMachineOnTwoLinesIsUsedOnOne) {
  printer("caja1");
  printer("caja2");
  printer("copy", "CAJA1");
  serve();
  EXPECT_TRUE(eventually([&] {
    int refused = 0;
    const Answered heard = ask("GET /v1/printers?fresh=1");
    for (const Json& one : heard.body["printers"])
      refused += one["cause"].is_string() &&
                 one["cause"].get<std::string>().find("same machine") != std::string::npos;
    return refused == 1;
  }));
  EXPECT_EQ(put("F-1", sale("caja2", "Arepa", R"("machine":"CAJA1","patience":5,)"), 20)
                .at("verdict")
                .find("other-machine"),
            0U)
      << "a job for another machine is not printed on this one";
}

TEST_F(Service, DoesNotStartTwiceNorWithoutPrinterBooksOrPort) {
  printer("caja1");
  serve();
  const std::string printer = " --printer caja1=" + file("caja1");
  struct Row {
    const char* what;
    std::string command, said;
  };
  std::filesystem::create_directory(file("own"));
  std::filesystem::create_directory(file("hurt"));
  write("hurt/broken.db", "this is no database, and has never been one, not even for a moment");
  const Row rows[]{
      {"a second service", "zentaro serve --listen none" + printer,
       "another service keeps books in the folder"},
      {"other books in its folder",
       "ZENTARO_BOOKS=" + file("other.db") + " zentaro serve --listen none" + printer,
       "another service keeps books in the folder"},
      {"a port that is taken",
       "ZENTARO_BOOKS=" + file("own/b.db") + " zentaro serve --listen 127.0.0.1:" + std::to_string(port) +
           printer,
       "cannot listen there"},
      {"no printer", "zentaro serve", "--printer"},
      {"a printer twice", "zentaro serve" + printer + printer, "twice"},
      {"a device twice", "zentaro serve --printer a=/dev/x --printer b=/dev/x", "/dev/x stands twice"},
      {"a config beside the command line, which counts",
       "zentaro serve --listen none --config " + file("here.toml") + printer, "another service keeps books"},
      {"a printer without a device", "zentaro serve --printer caja1", "NAME=DEVICE"},
      {"an address that is none", "zentaro serve --listen here" + printer, "--listen here"},
      {"damaged books", "ZENTARO_BOOKS=" + file("hurt/broken.db") + " zentaro serve --listen none" + printer,
       "damaged"},
      {"a chain in the clear", "zentaro serve --listen none --tills mqtt://10.0.0.1", "to this very machine"},
      {"both ends of a chain", "zentaro serve --centre mqtt://127.0.0.1 --tills mqtt://127.0.0.1",
       "one of them"},
      {"a till without a name", "zentaro serve --centre mqtt://127.0.0.1" + printer, "--till"},
      {"a chain without certificates", "zentaro serve --tills mqtts://a", "--ca"},
      {"a key that others read",
       "zentaro serve --tills mqtts://a --ca " + file("key") + " --cert " + file("key") + " --key " +
           file("key"),
       "chmod 600"},
      {"a config that names no option", "zentaro serve --config " + file("bad.toml"), "no option"},
  };
  write("key", "-----");
  std::filesystem::permissions(file("key"), std::filesystem::perms{0640});
  write("here.toml", "listen = \"here\"\n");
  write("bad.toml", "printre = [\"caja1=/dev/x\"]\n");
  for (const Row& row : rows) {
    const testing::Ran ran =
        run("timeout 20 " + (row.command.starts_with("ZENTARO") ? "env " + row.command : row.command));
    EXPECT_EQ(ran.status, 2) << row.what << "\n" << ran.output;
    EXPECT_NE(ran.output.find(row.said), std::string::npos) << row.what << "\n" << ran.output;
  }
  const testing::Ran sold =
      run("zentaro sale " + std::string(ZENTARO_SOURCES) + "/examples/sale.json --device " + file("caja1"));
  EXPECT_EQ(sold.status, 2) << "the service holds the port" << sold.output;
  const std::string instead = "send the job to the service: PUT http://127.0.0.1:" + std::to_string(port) +
                              "/v1/jobs/ID with \"printer\":\"caja1\"";
  EXPECT_NE(sold.output.find(instead), std::string::npos) << sold.output;
  EXPECT_NE(run("zentaro serve token add page").output.find("Page: http://127.0.0.1:8211/#token=zt_"),
            std::string::npos);
  fault("caja1", "cover-open on open");
  ASSERT_EQ(put("F-1", sale("caja1")).status, 202);
  std::string doctor;
  EXPECT_TRUE(eventually([&] {  // a job that is being tried does not wait
    doctor = run("zentaro doctor --device " + file("caja1")).output;
    return doctor.find("caja1 " + file("caja1") + ": jobs waiting: 1") != std::string::npos;
  })) << doctor;
  EXPECT_NE(doctor.find(instead), std::string::npos) << doctor;
  killService();
  EXPECT_NE(run("zentaro doctor --device " + file("caja1")).output.find("none keeps these books"),
            std::string::npos);
}

}  // namespace
}  // namespace zentaro::service
