// An HTTP server that no client can hold up. httplib reads and writes HTTP; the limits are kept here: bytes and
// time of a request, one request a connection, threads on demand, and an end that waits for nobody's next byte.
// What must not reach the handler is refused before it: foreign names and origins, transfer encodings, ranges,
// compressed and giant bodies.
#pragma once

#include <httplib.h>

#include <atomic>
#include <future>
#include <mutex>
#include <optional>
#include <set>

#include "base/http/guard.h"
#include "base/http/limits.h"

namespace zentaro::http {

using Request = httplib::Request;
using Response = httplib::Response;

class Server final : private httplib::Server {
 public:
  /// Called by many threads at once. A request's body is complete; its address and port are not told.
  using Handler = std::function<void(Server&, const Request&, Response&)>;
  /// Words an answer with this status, which the server gives by itself (refusalText has the usual ones).
  using Refuse = std::function<void(const Request&, Response&, int status)>;
  /// The next text of a stream, nothing at its end; asked again after an empty one. Waits a few seconds at most and
  /// then gives a comment, which finds out whether the client is still there. What it raises ends the stream.
  using Next = std::function<std::optional<std::string>()>;

  struct Settings {
    std::string host;
    int port = 0;  // 0: a free one
    Guard guard;
    Limits limits;
    httplib::Headers headers;  // of every answer
  };

  /// Serves from now on, on threads of its own. Throws std::system_error when it cannot listen there.
  Server(Settings settings, Handler handler, Refuse refuse);
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  ~Server() override { end(); }

  int port() const { return settings_.port; }
  /// Answers with server-sent events; false, and a refusal as the answer, when too many are open.
  bool stream(const Request& request, Response& response, Next next);
  /// Cuts every connection and waits for the handlers; whoever makes them wait must have woken them.
  void end();
  bool isEnding() const { return isEnding_; }

 private:
  bool process_and_close_socket(socket_t socket) override;
  void listen();
  void serve();
  void setUp();
  std::optional<int> refusal(const Request& request) const;
  void receive(Request& request, class Connection& connection) const;
  bool enter(socket_t socket);
  void leave(socket_t socket);

  Settings settings_;
  Handler handler_;
  Refuse refuse_;
  std::atomic<int> streams_{0};
  std::atomic<bool> isEnding_{false};
  std::mutex mutex_;
  std::set<socket_t> open_;
  std::future<void> served_;
};

}  // namespace zentaro::http
