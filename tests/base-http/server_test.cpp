// The server among hostile clients: whatever they do, others are answered and the end comes.
#include "base/http/server.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <list>
#include <thread>

#include "base/http/refusal.h"
#include "base/terminal/language.h"
#include "support/http_client.h"

namespace zentaro::http {
namespace {

using namespace std::chrono_literals;
using testing::HttpClient;
using testing::httpRequest;
using testing::httpStatus;

// Answers with what it got; /events streams what is said until it is closed.
class Echo {
 public:
  explicit Echo(Limits limits = {}, std::string host = "127.0.0.1")
      : server_{{std::move(host),
                 0,
                 {{"Tienda.local"}, {"https://tienda.example"}},
                 limits,
                 {{"X-Always", "yes"}}},
                [this](Server& server, const Request& request, Response& response) {
                  answer(server, request, response);
                },
                [](const Request&, Response& response, int status) {
                  response.status = status;
                  response.set_content(refusalText(status), "text/plain");
                }} {}
  ~Echo() { end(); }

  int port() const { return server_.port(); }
  void end() {
    {
      const std::lock_guard lock{mutex_};
      isOver_ = true;
    }
    changed_.notify_all();
    server_.end();
  }

  std::string ask(const std::string& text) const {
    HttpClient client{port()};
    client.send(text);
    return client.receivedUntilClosed();
  }
  bool answers() const { return ask(httpRequest("GET /x")).ends_with("GET /x "); }

 private:
  void answer(Server& server, const Request& request, Response& response) {
    if (request.path == "/throw") throw std::runtime_error("secret");
    if (request.path == "/torn")
      return void(server.stream(request, response,
                                []() -> std::optional<std::string> { throw std::runtime_error("secret"); }));
    if (request.path == "/large") return response.set_content(std::string(8'000'000, 'x'), "text/plain");
    if (request.path != "/events")
      return response.set_content(request.method + " " + request.path + " " + request.body, "text/plain");
    server.stream(request, response, [this]() -> std::optional<std::string> {
      std::unique_lock lock{mutex_};
      changed_.wait_for(lock, 20ms, [&] { return isOver_; });
      return isOver_ ? std::nullopt : std::optional<std::string>{": still here\n\n"};
    });
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  bool isOver_ = false;
  Server server_;
};

Limits quick() {
  Limits limits;
  limits.request = 300ms;
  return limits;
}

TEST(Refusals, AreToldInBothLanguages) {
  for (const int status : {400, 403, 411, 413, 414, 415, 416, 421, 500, 503}) {
    terminal::chooseLanguage(terminal::Language::Spanish);
    const std::string spanish = refusalText(status);
    terminal::chooseLanguage(terminal::Language::English);
    EXPECT_NE(refusalText(status), spanish) << status;
  }
}

TEST(Server, RefusesBeforeTheHandlerWhatIsNotToReachIt) {
  const Echo echo;
  const std::string put = "PUT /x";
  struct Row {
    const char* what;
    std::string text;
    int status;
  };
  const Row rows[]{
      {"a body", httpRequest(put, "", "a b"), 200},
      {"no body at all, as curl deletes", httpRequest("DELETE /x"), 200},
      {"an empty body", httpRequest(put, "Content-Length: 0\r\n"), 200},
      {"what is asked in another case", httpRequest("GET /x", "origin: https://tienda.example\r\n"), 200},
      {"the page itself", httpRequest("GET /x", "Origin: http://127.0.0.1\r\n"), 200},
      {"the page itself behind TLS", httpRequest("GET /x", "Origin: https://127.0.0.1\r\n"), 200},
      {"a name given", "GET /x HTTP/1.1\r\nHost: tienda.LOCAL:80\r\n\r\n", 200},
      {"an old client", "GET /x HTTP/1.0\r\nHost: localhost\r\n\r\n", 200},
      {"a foreign name", "GET /x HTTP/1.1\r\nHost: evil.example\r\n\r\n", 421},
      {"a name that begins as ours", "GET /x HTTP/1.1\r\nHost: 127.0.0.1.evil.example\r\n\r\n", 421},
      {"no name", "GET /x HTTP/1.1\r\n\r\n", 421},
      {"two names", "GET /x HTTP/1.1\r\nHost: localhost\r\nHost: evil.example\r\n\r\n", 421},
      {"a foreign page", httpRequest("GET /x", "Origin: https://evil.example\r\n"), 403},
      {"a page without an origin", httpRequest("GET /x", "Origin: null\r\n"), 403},
      {"another port of this host", httpRequest("GET /x", "Origin: http://127.0.0.1:81\r\n"), 403},
      {"chunks", httpRequest(put, "Transfer-Encoding: chunked\r\n") + "1\r\na\r\n0\r\n\r\n", 411},
      {"chunks and a length", httpRequest(put, "Transfer-Encoding: chunked\r\n", "0\r\n\r\n"), 411},
      {"ranges", httpRequest("GET /x", "Range: bytes=0-1,0-1\r\n"), 416},
      {"a compressed body", httpRequest(put, "Content-Encoding: gzip\r\n", "x"), 415},
      {"a giant body", httpRequest(put, "Content-Length: 99999999999\r\n"), 413},
      {"a giant body after asking", httpRequest(put, "Expect: 100-continue\r\nContent-Length: 256001\r\n"),
       413},
      {"a length that is none", httpRequest(put, "Content-Length: -1\r\n"), 400},
      {"a length with more behind it", httpRequest(put, "Content-Length: 1, 1\r\n") + "x", 400},
      {"two lengths", httpRequest(put, "Content-Length: 1\r\nContent-Length: 2\r\n") + "xy", 400},
      {"a length over all numbers", httpRequest(put, "Content-Length: 99999999999999999999999\r\n"), 400},
      {"no HTTP", "hello\r\n\r\n", 400},
      {"a long address", httpRequest("GET /" + std::string(9'000, 'x')), 414},
      {"a fault inside", httpRequest("GET /throw"), 500},
      {"a stream that is torn inside", httpRequest("GET /torn"), 200},
  };
  for (const Row& row : rows) {
    const std::string answer = echo.ask(row.text);
    EXPECT_EQ(httpStatus(answer), row.status) << row.what << "\n" << answer;
    EXPECT_NE(answer.find("X-Always: yes"), std::string::npos) << row.what;
    EXPECT_EQ(answer.find("secret"), std::string::npos) << row.what;
  }
  EXPECT_TRUE(echo.ask(rows[0].text).ends_with("PUT /x a b"));
}

TEST(Server, OneRequestAConnectionSoThatNoBodyIsReadAsAnother) {
  const Echo echo;
  const std::string answer = echo.ask(httpRequest("GET /first", "Connection: keep-alive\r\n") +
                                      httpRequest("GET /second", "Connection: keep-alive\r\n"));
  EXPECT_NE(answer.find("/first"), std::string::npos);
  EXPECT_EQ(answer.find("/second"), std::string::npos);
}

TEST(Server, BodiesInPiecesAndAskedForFirstArriveWhole) {
  const Echo echo;
  HttpClient client{echo.port()};
  client.send(httpRequest("PUT /x", "Expect: 100-continue\r\nContent-Length: 10\r\n"));
  EXPECT_EQ(httpStatus(client.receive(10s, "\r\n\r\n")), 100);
  for (const char* piece : {"01", "23456", "78", "9"}) {
    client.send(piece);
    std::this_thread::sleep_for(20ms);
  }
  EXPECT_TRUE(client.receivedUntilClosed().ends_with("PUT /x 0123456789"));
}

TEST(Server, ARefusalReachesAClientThatGoesOnSending) {
  const Echo echo;
  HttpClient client{echo.port()};
  client.send(httpRequest("PUT /x", "Content-Length: 50000000\r\n"));
  const std::string megabyte(1'000'000, 'x');
  for (int count = 0; count < 8; ++count) client.send(megabyte);
  EXPECT_EQ(httpStatus(client.receive(10s, "\r\n\r\n")), 413);
}

TEST(Server, SlowAndEndlessRequestsAreCut) {
  const Echo echo{quick()};
  const auto dribble = [&](const std::string& begin, const std::string& piece) {
    HttpClient client{echo.port()};
    client.send(begin);
    for (int count = 0; count < 500 && client.send(piece); ++count) std::this_thread::sleep_for(20ms);
    return httpStatus(client.receivedUntilClosed());
  };
  EXPECT_NE(dribble("", "G"), 200);
  EXPECT_NE(dribble("GET /x HTTP/1.1\r\nHost: localhost\r\n", "A: b\r\n"), 200);
  EXPECT_NE(dribble(httpRequest("PUT /x", "Content-Length: 9999\r\n"), "x"), 200);
  HttpClient endless{echo.port()};  // more than the head may have, at once
  endless.send("GET /x HTTP/1.1\r\nHost: localhost\r\n");
  const std::string header = "A: " + std::string(1'000, 'b') + "\r\n";
  for (int count = 0; count < 100'000 && endless.send(header); ++count) continue;
  EXPECT_NE(httpStatus(endless.receive()), 200);
  EXPECT_TRUE(echo.answers());
}

TEST(Server, AtTheLimitTheDoorStaysShutUntilADeadlineFreesAPlace) {
  Limits limits = quick();
  limits.connections = 4;
  const Echo echo{limits};
  std::list<HttpClient> halves;
  for (int count = 0; count < 20; ++count) halves.emplace_back(echo.port()).send("GET /x HTT");
  EXPECT_TRUE(echo.answers()) << "five turns of four";
}

TEST(Server, AClientThatReadsNothingIsLeft) {
  Echo echo{quick()};
  HttpClient client{echo.port()};
  client.send(httpRequest("GET /large"));
  std::this_thread::sleep_for(1s);
  EXPECT_TRUE(echo.answers());
  EXPECT_LT(client.receive().size(), 8'000'000U);
}

TEST(Server, StreamsOutliveTheDeadlineAreCountedAndEndWithTheServer) {
  Limits limits = quick();
  limits.streams = 2;
  Echo echo{limits};
  std::optional<HttpClient> first{std::in_place, echo.port()};
  HttpClient second{echo.port()};
  first->send(httpRequest("GET /events"));
  second.send(httpRequest("GET /events"));
  EXPECT_NE(first->receive(10s, "still here").find("still here"), std::string::npos);
  EXPECT_NE(second.receive(10s, "still here").find("still here"), std::string::npos);
  EXPECT_EQ(httpStatus(echo.ask(httpRequest("GET /events"))), 503);
  first.reset();
  const auto isFree = [&] {
    HttpClient third{echo.port()};
    third.send(httpRequest("GET /events"));
    return httpStatus(third.receive(10s, "\r\n\r\n")) == 200;
  };
  for (int tries = 0; !isFree(); ++tries) {
    ASSERT_LT(tries, 500) << "a stream that was left stays counted";
    std::this_thread::sleep_for(20ms);  // it is noticed at its next word
  }
  second.receive(500ms);
  EXPECT_FALSE(second.isClosed()) << "the deadline of a request is not that of a stream";
  echo.end();
  second.receivedUntilClosed();
}

TEST(Server, EndsWhateverItsClientsDo) {
  Echo echo;
  std::list<HttpClient> clients;
  for (const char* begin :
       {"", "G", "GET /x HTTP/1.1\r\nA", "PUT /x HTTP/1.1\r\nHost: localhost\r\nContent-Length: 9\r\n\r\n",
        "GET /events HTTP/1.1\r\nHost: localhost\r\n\r\n", "GET /large HTTP/1.1\r\nHost: localhost\r\n\r\n"})
    for (int count = 0; count < 5; ++count) clients.emplace_back(echo.port()).send(begin);
  EXPECT_TRUE(echo.answers());
  const auto begun = std::chrono::steady_clock::now();
  echo.end();
  EXPECT_LT(std::chrono::steady_clock::now() - begun, 9s) << "the deadline of none of them was waited for";
  EXPECT_THROW(HttpClient{echo.port()}, std::runtime_error);
}

TEST(Server, APortThatIsTakenIsToldWithTheSystemsWords) {
  const Echo echo;
  try {
    Server second{{"127.0.0.1", echo.port(), {}, {}, {}}, {}, {}};
    FAIL() << "two servers on one port";
  } catch (const std::system_error& error) {
    EXPECT_EQ(error.code(), std::errc::address_in_use);
  }
}

}  // namespace
}  // namespace zentaro::http
