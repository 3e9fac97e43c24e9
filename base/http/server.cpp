// The server's limits around httplib.
#include "base/http/server.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <system_error>
#include <thread>

#include "base/http/connection.h"
#include "base/http/threads.h"

namespace zentaro::http {
namespace {

using namespace std::chrono_literals;

// A header of this name cannot come from a client: a name ends at the first colon.
const std::string refusedHeader = ":refused";

std::optional<std::size_t> bodySize(const Request& request) {
  const std::size_t count = request.get_header_value_count("Content-Length");
  if (count == 0) return 0;
  const std::string text = request.get_header_value("Content-Length");
  std::size_t size = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size);
  if (count > 1 || text.empty() || error != std::errc{} || end != text.data() + text.size())
    return std::nullopt;
  return size;
}

// Half of the descriptors stay with the rest of the program.
std::size_t connectionLimit(std::size_t wanted) {
  return std::clamp<std::size_t>(descriptorLimit() / 2, 1, wanted);
}

}  // namespace

Server::Server(Settings settings, Handler handler, Refuse refuse)
    : settings_{std::move(settings)}, handler_{std::move(handler)}, refuse_{std::move(refuse)} {
  setUp();
  listen();
  served_ = std::async(std::launch::async, [this] { serve(); });
}

void Server::setUp() {
  const std::size_t connections = connectionLimit(settings_.limits.connections);
  new_task_queue = [connections] { return new Threads{connections}; };  // httplib deletes it
  // Without this a second program could share the port, and each client would meet the one or the other.
  set_socket_options([](socket_t socket) { takeDoor(static_cast<SocketHandle>(socket)); });
  set_default_headers(settings_.headers);
  set_pre_routing_handler([this](const Request& request, Response& response) {
    if (request.has_header(refusedHeader)) {
      refuse_(request, response, std::stoi(request.get_header_value(refusedHeader)));
    } else {
      response.status = 200;
      handler_(*this, request, response);
    }
    return HandlerResponse::Handled;
  });
  set_exception_handler([this](const Request& request, Response& response, const std::exception_ptr&) {
    refuse_(request, response, 500);
  });
  set_error_handler([this](const Request& request, Response& response) {
    if (response.body.empty() && !response.has_header("Content-Type"))
      refuse_(request, response, response.status);
  });
}

void Server::listen() {
  errno = 0;
  if (settings_.port == 0) {
    settings_.port = std::max(bind_to_any_port(settings_.host), 0);
    if (settings_.port == 0)
      throw std::system_error(errno == 0 ? EADDRNOTAVAIL : errno, std::generic_category());
  } else if (!bind_to_port(settings_.host, settings_.port)) {
    throw std::system_error(errno == 0 ? EADDRNOTAVAIL : errno, std::generic_category());
  }
  widenDoor(static_cast<SocketHandle>(svr_sock_.load()));
}

void Server::serve() {
  while (!isEnding_) {
    listen_after_bind();
    if (isEnding_) return;
    // A network that was torn down takes the listening socket with it: the door is opened anew.
    std::this_thread::sleep_for(100ms);
    try {
      listen();
    } catch (const std::system_error&) {
      continue;
    }
  }
}

void Server::end() {
  isEnding_ = true;
  if (!served_.valid()) return;
  do {
    if (is_running() && svr_sock_ != INVALID_SOCKET) stop();
    const std::lock_guard lock{mutex_};
    for (const socket_t socket : open_) shutDown(static_cast<SocketHandle>(socket));
  } while (served_.wait_for(10ms) != std::future_status::ready);
  served_.get();
}

bool Server::enter(socket_t socket) {
  const std::lock_guard lock{mutex_};
  return !isEnding_ && open_.insert(socket).second;
}

void Server::leave(socket_t socket) {
  // Closed under the lock: its number is given to the next connection at once.
  const std::lock_guard lock{mutex_};
  open_.erase(socket);
  closeSocket(static_cast<SocketHandle>(socket));
}

bool Server::process_and_close_socket(socket_t socket) {
  if (enter(socket)) {
    Connection connection{static_cast<SocketHandle>(socket), settings_.limits};
    bool isClosed = true;
    process_request(connection, true, isClosed, [&](Request& request) { receive(request, connection); });
    connection.finish();
  }
  leave(socket);
  return true;
}

std::optional<int> Server::refusal(const Request& request) const {
  const std::string host = request.get_header_value("Host");
  if (request.get_header_value_count("Host") > 1 || !settings_.guard.knowsHost(host)) return 421;
  if (!settings_.guard.letsAsk(request.get_header_value("Origin"), host)) return 403;
  if (request.has_header("Transfer-Encoding")) return 411;
  if (request.has_header("Range")) return 416;
  if (request.has_header("Content-Encoding")) return 415;
  const std::optional<std::size_t> size = bodySize(request);
  if (!size) return 400;
  if (*size > settings_.limits.body) return 413;
  return std::nullopt;
}

void Server::receive(Request& request, Connection& connection) const {
  request.ranges.clear();
  const bool isAwaited = request.has_header("Expect");
  request.headers.erase("Expect");  // httplib would answer it without looking at the size
  std::optional<int> refused = refusal(request);
  if (!refused) {
    const std::size_t size = bodySize(request).value_or(0);
    constexpr std::string_view goOn = "HTTP/1.1 100 Continue\r\n\r\n";
    if (isAwaited && size > 0) connection.write(goOn.data(), goOn.size());
    if (!connection.readBody(request.body, size)) refused = 400;
  }
  if (refused) request.set_header(refusedHeader, std::to_string(*refused));
}

bool Server::stream(const Request& request, Response& response, Next next) {
  if (++streams_ > settings_.limits.streams) {
    --streams_;
    refuse_(request, response, 503);
    return false;
  }
  response.set_chunked_content_provider(
      "text/event-stream",
      [this, next = std::move(next)](std::size_t, httplib::DataSink& sink) {
        std::optional<std::string> text;
        try {
          do {
            text = isEnding_ ? std::nullopt : next();
          } while (text && text->empty());  // httplib takes an empty piece for the end
        } catch (const std::exception&) {   // httplib would let it end the process
          text.reset();
        }
        if (!text) sink.done();
        return !text || sink.write(text->data(), text->size());
      },
      [this](bool) { --streams_; });
  return true;
}

}  // namespace zentaro::http
