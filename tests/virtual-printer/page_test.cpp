// The page over HTTP, as clients of every kind meet it. Every wait has a bound.
#include "support/http_client.h"
#include "virtual-printer/program.h"

namespace virtual_printer::page_test {

using namespace program;

struct Page : Printer {
  explicit Page(std::vector<std::string> options) : Printer(std::move(options)) {
    EXPECT_TRUE(isReady()) << errors();
    const std::size_t at = errors().find("page: http://");
    port = std::stoi(errors().substr(errors().find(':', at + 13) + 1));
  }
  std::string ask(const std::string& request) const {
    const Descriptor client = dialled(port);
    ::send(client.get(), request.data(), request.size(), MSG_NOSIGNAL);
    return readFor(client.get(), [](const std::string&) { return false; });
  }
  std::string get(const std::string& path) const {
    return ask("GET " + path + " HTTP/1.1\r\nHost: localhost\r\n\r\n");
  }
  std::string token() const {
    constexpr std::string_view before = "name=\"token\" content=\"";
    const std::string page = get("/");
    return page.substr(page.find(before) + before.size(), 32);
  }

  int port = 0;
};

// Each takes a connection and keeps it.
std::vector<Descriptor> halfRequests(int port, int count) {
  std::vector<Descriptor> clients;
  for (int client = 0; client < count; ++client) {
    clients.push_back(dialled(port));
    ::send(clients.back().get(), "GET / HT", 8, MSG_NOSIGNAL);
  }
  return clients;
}

TEST(Page, AnswersItsOwnAndRefusesTheRest) {
  const Scratch scratch;
  const Page page{with(scratch, {"--web", "0", "--quiet"})};
  const std::string token = page.token(), own = " HTTP/1.1\r\nHost: localhost\r\n";
  const auto post = [&](const std::string& body, const std::string& headers) {
    return "POST /control" + own + headers + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" +
           body;
  };
  const std::string trusted = "X-Token: " + token + "\r\n";
  const struct {
    const char* what;
    std::string request;
    const char* answer;
  } rows[] = {
      {"the page", "GET /" + own + "\r\n", " 200 "},
      {"a file of it", "GET /words.js" + own + "\r\n", " 200 "},
      {"anything else", "GET /etc/passwd" + own + "\r\n", " 404 "},
      {"a name that was pointed here", "GET / HTTP/1.1\r\nHost: evil.example\r\n\r\n", " 421 "},
      {"another page's question", "GET /" + own + "Origin: http://evil.example\r\n\r\n", " 403 "},
      {"events without the token", "GET /events?token=0123" + own + "\r\n", " 403 "},
      {"an order without the token", post("clear", ""), " 403 "},
      {"an order with an earlier token", post("clear", "X-Token: 0123456789abcdef0123456789abcdef\r\n"),
       " 403 "},
      {"an order", post("fault paper-out on item", trusted), " 200 "},
      {"a plan that is wrong", post("fault explode", trusted), "error: "},
      {"the end of the printer", post("quit", trusted), " 400 "},
      {"two orders in one", post("clear\nquit", trusted), " 400 "},
      {"another method", "DELETE /" + own + "\r\n", " 405 "},
      {"a chunked body", "POST /control" + own + trusted + "Transfer-Encoding: chunked\r\n\r\n5\r\nclear\r\n",
       " 411 "},
      {"a giant body", "POST /control" + own + trusted + "Content-Length: 9999999\r\n\r\nclear", " 413 "},
      {"headers without end", "GET /" + own + "X: " + std::string(20'000, 'x') + "\r\n\r\n", " 400 "},
  };
  for (const auto& row : rows)
    EXPECT_TRUE(contains(page.ask(row.request).substr(0, 2000), row.answer)) << row.what;
  EXPECT_EQ(Port{scratch / "port"}.say("80"), "ZPV0000001") << "it is still there";
}

TEST(Page, OpensAnewHoweverOftenItWasLeft) {
  const Scratch scratch;
  const Page page{with(scratch, {"--web", "0", "--quiet"})};
  const std::string events = "/events?token=" + page.token();
  for (int visit = 0; visit < 40; ++visit) {
    const Descriptor client = dialled(page.port);
    const std::string request = "GET " + events + " HTTP/1.1\r\nHost: localhost\r\n\r\n";
    const auto first = [&] {
      ::send(client.get(), request.data(), request.size(), MSG_NOSIGNAL);
      return readFor(client.get(), [](const std::string& text) { return contains(text, "event: about"); });
    };
    ASSERT_TRUE(contains(first(), "event: about")) << visit;
    // What was left is found out by the next thing to say.
    Port{scratch / "port"}.say("59");
  }
}

TEST(Page, NamesNoDeviceWhileTheLineIsGone) {
  const Scratch scratch;
  const Page page{with(scratch, {"--web", "0", "--quiet", "--fault", "hang-up=60 on serial"})};
  HttpClient client{page.port};
  client.send(httpRequest("GET /events?token=" + page.token()));
  EXPECT_EQ(Port{scratch / "port"}.say("80"), "no answer");
  EXPECT_TRUE(contains(client.receive(10s, R"("device":"")"), R"("device":"")"));
}

TEST(Page, NobodyKeepsThePrinterFromEnding) {
  const Scratch scratch;
  Page page{with(scratch, {"--web", "0", "--quiet"})};
  const std::vector<Descriptor> clients = halfRequests(page.port, 40);
  const Descriptor reader = dialled(page.port);
  const std::string events = "GET /events?token=" + page.token() + " HTTP/1.1\r\nHost: localhost\r\n\r\n";
  ::send(reader.get(), events.data(), events.size(), MSG_NOSIGNAL);
  const Descriptor dribbler = dialled(page.port);
  const std::string begin = "GET / HTTP/1.1\r\nHost: localhost\r\nX: ";
  ::send(dribbler.get(), begin.data(), begin.size(), MSG_NOSIGNAL);
  const std::jthread dribble{[&](const std::stop_token& over) {
    while (!over.stop_requested() && ::send(dribbler.get(), "x", 1, MSG_NOSIGNAL) == 1)
      std::this_thread::sleep_for(200ms);
  }};
  const auto asked = std::chrono::steady_clock::now();
  EXPECT_EQ(page.end(SIGTERM), 0);
  EXPECT_LT(std::chrono::steady_clock::now() - asked, 9s) << "the deadline of none of them was waited for";
}

TEST(Page, HalfRequestsLeaveThePrinterItsDescriptors) {
  const Scratch scratch;
  const std::string port = scratch / "port";
  Process printer{
      {"sh", "-c",
       "ulimit -n 40; exec zentaro-printer --quiet --web 0 --fault 'hang-up=0.1 on serial' --link " + port +
           " --state " + (scratch / "state.json").string()}};
  ASSERT_TRUE(printer.says("ready: "));
  const std::string said = printer.errors();
  const std::vector<Descriptor> clients = halfRequests(std::stoi(said.substr(said.find("0.1:") + 4)), 40);
  EXPECT_EQ(Port{port}.say("48"), "00000001");
  EXPECT_EQ(Port{port}.say("80"), "no answer");
  ASSERT_TRUE(eventually([&] { return occurrences(printer.errors(), "ready: ") == 2; })) << printer.errors();
  EXPECT_EQ(Port{port}.say("4A"), "00000001") << "a new line was to be had, and the state written";
}

TEST(Page, SaysWhereItIsAndWhoReachesIt) {
  const struct {
    const char* address;
    const char* said;
  } rows[] = {
      {"0.0.0.0:0", "it has no password"},
      {"127.0.0.1:0", "ready: "},
      {"evil.example.invalid:0", "--web evil.example.invalid:0: cannot listen there"},
      {"192.0.2.1:0", "--web 192.0.2.1:0: cannot listen there"},
  };
  for (const auto& row : rows) {
    const Scratch scratch;
    const Printer printer{{"--quiet", "--web", row.address, "--link", scratch / "\xFF\xFE port"}};
    EXPECT_TRUE(printer.says(row.said)) << row.address << "\n" << printer.errors();
    EXPECT_EQ(contains(printer.errors(), "password"), std::string(row.address) == "0.0.0.0:0");
  }
}

TEST(Page, SellsASampleOnTheLineOfNobody) {
  const Scratch scratch;
  const Page page{with(scratch, {"--web", "0", "--control", scratch / "control"})};
  Port host{scratch / "port"};
  EXPECT_EQ(host.say("48"), "00000001");
  const auto order = [&](const std::string& line) {
    return page.ask("POST /control HTTP/1.1\r\nHost: localhost\r\nX-Token: " + page.token() +
                    "\r\nContent-Length: " + std::to_string(line.size()) + "\r\n\r\n" + line);
  };
  EXPECT_TRUE(contains(order("sample"), "a program is using the printer"));
  EXPECT_EQ(host.say("4A"), "00000001");
  EXPECT_TRUE(contains(order("fault delay=1 on close"), "ok"));
  EXPECT_TRUE(contains(order("sample"), "\r\n\r\nok"));
  EXPECT_EQ(host.say("38 *"), "0|0|1|0|0|1") << "the host is answered afterwards, by its own answer";
  EXPECT_EQ(occurrences(page.output(), "CLIENTE DE MUESTRA"), 1U);
  EXPECT_TRUE(contains(order("fault paper-out on item"), "ok"));
  for (int sample = 0; sample < 2; ++sample)
    EXPECT_TRUE(eventually([&] { return contains(order("sample"), "\r\n\r\nok"); }))
        << "what a sample left open is in nobody's way";
}

}  // namespace virtual_printer::page_test
