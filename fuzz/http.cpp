// What clients send to the service: bodies of jobs ("b") and whole requests ("r") to a server on this machine. A body
// is refused with a reason or read the same each time; a connection reaches the handler once at most, and only with a
// request that may.
#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>

#include "base/http/refusal.h"
#include "base/http/server.h"
#include "check.h"
#include "service/jobs/job_request.h"

namespace {

using namespace zentaro;
using fuzz::require;

void readBody(std::string_view body) {
  const service::RequestReading reading = service::readJobRequest(body),
                                again = service::readJobRequest(body);
  require(reading.request.digest == again.request.digest, "a body is read the same each time");
  service::readCheckRequest(body);
  if (!reading.noJson.empty() || !reading.problems.empty()) return;
  const service::JobRequest& request = reading.request;
  require(!request.printer.empty() && !request.digest.empty(),
          "what is in order has a printer and a content");
  require(request.attempt >= 1 && request.patience.count() >= 1 && request.patience.count() <= 3600,
          "attempt and patience are within their bounds");
  require(request.isClosing() || request.totals.due() >= 0, "a sale has its total");
}

std::atomic<int> handled{0};

const http::Guard guard{{"till.example"}, {"https://shop.example"}};

http::Server& server() {
  static http::Server made(
      {.host = "127.0.0.1", .port = 0, .guard = guard, .limits = {}, .headers = {}},
      [](http::Server&, const http::Request& request, http::Response& response) {
        ++handled;
        const std::string host = request.get_header_value("Host");
        require(guard.knowsHost(host), "no foreign name comes in");
        require(guard.letsAsk(request.get_header_value("Origin"), host), "nor a foreign page");
        require(!request.has_header("Transfer-Encoding"), "nor what has no length");
        response.set_content("{}", "application/json");
      },
      [](const http::Request&, http::Response& response, int status) {
        response.set_content(http::refusalText(status), "text/plain");
      });
  return made;
}

void send(std::string_view text) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(server().port()));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const int client = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  require(::connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0,
          "the server takes a connection");
  handled = 0;
  const bool isSent = ::send(client, text.data(), text.size(), MSG_NOSIGNAL) >= 0;
  ::shutdown(client, SHUT_WR);
  std::string answer;
  char part[4096];
  for (ssize_t count = 0; isSent && (count = ::recv(client, part, sizeof part, 0)) > 0;)
    answer.append(part, static_cast<std::size_t>(count));
  ::close(client);
  require(answer.empty() || answer.starts_with("HTTP/1."), "an answer is one of HTTP");
  require(handled <= 1, "one connection is one request");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = fuzz::textOf(data, size);
  if (text.starts_with('b')) readBody(text.substr(1));
  if (text.starts_with('r')) send(text.substr(1));
  return 0;
}
