// HTTP with cpp-httplib; the only file that includes it.
#include "virtual-printer/web/server.h"

#include <httplib.h>
#include <sys/random.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <stdexcept>
#include <thread>

#include "base/terminal/language.h"
#include "virtual-printer/web/guard.h"
#include "virtual-printer/web/page_files.h"
#include "virtual-printer/wire/frame.h"

namespace printer {
namespace {

using namespace std::chrono_literals;
using zentaro::terminal::say;

constexpr std::size_t threads = 24;
constexpr int mostStreams = 16;            // pages open at once; the other threads serve files and actions
constexpr std::size_t longestLine = 4096;  // as on the control socket
// Rows that change byte by byte are sent once in this time.
constexpr auto breath = 40ms;
constexpr auto heartbeat = 2s;

constexpr const char* contentPolicy =
    "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; img-src data: blob:; "
    "base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

std::string newToken() {
  std::array<unsigned char, 16> bytes{};
  if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
    throw std::runtime_error(std::string{
        say("--web: el sistema no da números al azar", "--web: the system gives no random numbers")});
  std::string token;
  for (const unsigned char byte : bytes) token += hexadecimal(byte, 2);
  return token;
}

// Only what the page offers: it cannot end the printer.
bool isOffered(const std::string& line) { return line.starts_with("fault ") || line.starts_with("clear"); }

std::uint64_t lastSeen(const httplib::Request& request) {
  const std::string text = request.get_header_value("Last-Event-ID");
  std::uint64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

std::string eventText(const Feed::Message& message) {
  return "id: " + std::to_string(message.number) + "\nevent: " + message.topic + "\ndata: " + message.json +
         "\n\n";
}

void answer(httplib::Response& response, int status, std::string_view text) {
  response.status = status;
  response.set_content(std::string{text} + "\n", "text/plain; charset=utf-8");
}

}  // namespace

class WebServer::Service {
 public:
  Service(Address address, Feed& feed, Act act)
      : address_{std::move(address)}, feed_{feed}, act_{std::move(act)}, token_{newToken()} {
    setUp();
    listen();
    thread_ = std::thread{[this] { server_.listen_after_bind(); }};
    // An end before the beginning would not be noticed.
    while (!server_.is_running()) std::this_thread::sleep_for(1ms);
  }
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;
  ~Service() {
    feed_.close();
    server_.stop();
    thread_.join();
  }

  const Address& address() const { return address_; }

 private:
  using Request = httplib::Request;
  using Response = httplib::Response;
  using Routing = httplib::Server::HandlerResponse;

  void setUp();
  void listen();
  Routing guard(const Request& request, Response& response) const;
  bool hasToken(const std::string& given, Response& response) const;
  void servePage();
  void act(const Request& request, Response& response) const;
  void stream(const Request& request, Response& response);

  Address address_;
  Feed& feed_;
  Act act_;
  const std::string token_;
  std::atomic<int> streams_{0};
  httplib::Server server_;
  std::thread thread_;
};

void WebServer::Service::setUp() {
  server_.new_task_queue = [] { return new httplib::ThreadPool(threads); };  // the server deletes it
  // Without this a second printer could share the port, and each page would meet the one or the other.
  server_.set_socket_options([](socket_t socket) {
    const int yes = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  });
  server_.set_tcp_nodelay(true);
  server_.set_keep_alive_timeout(1);
  server_.set_payload_max_length(longestLine);
  server_.set_default_headers({{"Content-Security-Policy", contentPolicy},
                               {"X-Content-Type-Options", "nosniff"},
                               {"Referrer-Policy", "no-referrer"},
                               {"Cross-Origin-Resource-Policy", "same-origin"},
                               {"Cache-Control", "no-store"}});
  server_.set_pre_routing_handler(
      [this](const Request& request, Response& response) { return guard(request, response); });
  servePage();
  server_.Get("/events", [this](const Request& request, Response& response) { stream(request, response); });
  server_.Post("/control", [this](const Request& request, Response& response) { act(request, response); });
}

void WebServer::Service::listen() {
  errno = 0;
  if (address_.port == 0) {
    address_.port = server_.bind_to_any_port(address_.host);
    if (address_.port > 0) return;
  } else if (server_.bind_to_port(address_.host, address_.port)) {
    return;
  }
  const std::string reason = errno == 0 ? std::string{} : std::string{" ("} + std::strerror(errno) + ")";
  throw std::runtime_error(say("--web {}: no se puede escuchar allí{}; indique otro puerto",
                               "--web {}: cannot listen there{}; name another port",
                               {authority(address_), reason}));
}

WebServer::Service::Routing WebServer::Service::guard(const Request& request, Response& response) const {
  const std::string host = request.get_header_value("Host");
  if (!isOwnHost(host, address_.host)) {
    answer(response, 421,
           say("este nombre no se atiende aquí; abra la dirección que la impresora dijo al arrancar",
               "this name is not served here; open the address that the printer named at its start"));
  } else if (!isOwnOrigin(request.get_header_value("Origin"), host)) {
    answer(
        response, 403,
        say("solo puede preguntar la página de la propia impresora", "only the printer's own page may ask"));
  } else {
    return Routing::Unhandled;
  }
  return Routing::Handled;
}

bool WebServer::Service::hasToken(const std::string& given, Response& response) const {
  if (given == token_) return true;
  answer(response, 403,
         say("esta página es de una impresora anterior; cárguela de nuevo",
             "this page is of an earlier printer; load it again"));
  return false;
}

void WebServer::Service::servePage() {
  for (const PageFile& file : pageFiles()) {
    std::string content{file.content};
    if (const std::size_t mark = content.find(tokenMark); mark != std::string::npos)
      content.replace(mark, tokenMark.size(), token_);
    std::string pattern{file.path};
    for (std::size_t dot = pattern.find('.'); dot != std::string::npos; dot = pattern.find('.', dot + 2))
      pattern.insert(dot, 1, '\\');
    server_.Get(pattern, [content, type = std::string{file.type}](const Request&, Response& response) {
      response.set_content(content, type);
    });
  }
}

void WebServer::Service::act(const Request& request, Response& response) const {
  if (!hasToken(request.get_header_value("X-Token"), response)) return;
  if (!isOffered(request.body) || request.body.find('\n') != std::string::npos)
    return answer(response, 400, "error: the page may say \"fault PLAN\" and \"clear\"");
  const std::optional<std::string> reply = act_(request.body);
  if (!reply) return answer(response, 503, "error: the printer is busy or ending");
  answer(response, 200, *reply);
}

void WebServer::Service::stream(const Request& request, Response& response) {
  if (!hasToken(request.get_param_value("token"), response)) return;
  if (++streams_ > mostStreams) {
    --streams_;
    return answer(response, 503,
                  say("hay demasiadas páginas abiertas; cierre una", "too many pages are open; close one"));
  }
  response.set_chunked_content_provider(
      "text/event-stream",
      [this, seen = lastSeen(request)](std::size_t, httplib::DataSink& sink) mutable {
        const std::vector<Feed::Message> messages = feed_.after(seen, heartbeat);
        if (feed_.isClosed()) {
          sink.done();
          return true;
        }
        // A comment that says nothing finds out whether the page is still there.
        std::string text = messages.empty() ? ":\n\n" : "";
        for (const Feed::Message& message : messages) text += eventText(message);
        if (!messages.empty()) seen = messages.back().number;
        const bool isThere = sink.write(text.data(), text.size());
        if (isThere && !messages.empty()) std::this_thread::sleep_for(breath);
        return isThere;
      },
      [this](bool) { --streams_; });
}

WebServer::WebServer(Address address, Feed& feed, Act act)
    : service_{std::make_unique<Service>(std::move(address), feed, std::move(act))} {}

WebServer::~WebServer() = default;

std::string WebServer::url() const { return "http://" + authority(service_->address()) + "/"; }

}  // namespace printer
