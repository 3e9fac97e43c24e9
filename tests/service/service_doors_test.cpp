// Who is let in, what is told in a stream, and when the service does not start.
#include "service/service_fixture.h"

namespace zentaro::service::service_test {

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

}  // namespace zentaro::service::service_test
