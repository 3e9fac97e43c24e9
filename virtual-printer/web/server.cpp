// What the page is served, and what it may ask for.
#include "virtual-printer/web/server.h"

#include <charconv>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "base/http/refusal.h"
#include "base/http/server.h"
#include "base/system/error_text.h"
#include "base/system/random.h"
#include "base/terminal/language.h"
#include "virtual-printer/web/page_files.h"

namespace virtual_printer {

using zentaro::system::authority;

namespace {

using namespace std::chrono_literals;
using zentaro::http::Request;
using zentaro::http::Response;
using zentaro::terminal::say;

// Rows that change byte by byte are sent once in this time.
constexpr auto breath = 40ms;
constexpr auto heartbeat = 2s;

// Only what the page offers: it cannot end the printer.
bool isOffered(const std::string& line) {
  return (line == "sample" || line.starts_with("fault ") || line.starts_with("clear")) &&
         line.find('\n') == std::string::npos;
}

std::uint64_t lastSeen(const Request& request) {
  const std::string text = request.get_header_value("Last-Event-ID");
  std::uint64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

std::string eventText(const Feed::Message& message) {
  return "id: " + std::to_string(message.number) + "\nevent: " + message.topic + "\ndata: " + message.json +
         "\n\n";
}

void answer(Response& response, int status, std::string_view text) {
  response.status = status;
  response.set_content(std::string{text} + "\n", "text/plain; charset=utf-8");
}

void refuse(const Request&, Response& response, int status) {
  answer(response, status, zentaro::http::refusalText(status));
}

zentaro::http::Server::Settings settingsFor(const Address& address) {
  zentaro::http::Server::Settings settings;
  settings.host = address.host;
  settings.port = address.port;
  settings.guard.hosts = {address.host};
  settings.limits.body = 4096;   // as long as a line on the control socket
  settings.limits.streams = 16;  // pages open at once
  settings.headers = zentaro::http::pageHeaders();
  settings.headers.emplace("Cross-Origin-Resource-Policy", "same-origin");
  return settings;
}

}  // namespace

class WebServer::Service {
 public:
  Service(const Address& address, Feed& feed, Act act)
      : feed_{feed},
        act_{std::move(act)},
        server_{settingsFor(address),
                [this](zentaro::http::Server& server, const Request& request, Response& response) {
                  handle(server, request, response);
                },
                refuse} {}
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;
  ~Service() { feed_.close(); }

  int port() const { return server_.port(); }

 private:
  void handle(zentaro::http::Server& server, const Request& request, Response& response);
  void servePage(const std::string& path, Response& response) const;
  bool hasToken(const std::string& given, Response& response) const;
  void act(const Request& request, Response& response) const;
  std::optional<std::string> next(std::uint64_t& seen);

  Feed& feed_;
  Act act_;
  const std::string token_ = zentaro::system::randomHex(16);
  zentaro::http::Server server_;
};

void WebServer::Service::handle(zentaro::http::Server& server, const Request& request, Response& response) {
  const bool isReading = request.method == "GET" || request.method == "HEAD";
  if (request.path == "/control" && request.method == "POST") return act(request, response);
  if (!isReading) return answer(response, 405, say("eso no se hace aquí", "that is not done here"));
  if (request.path != "/events") return servePage(request.path, response);
  if (!hasToken(request.get_param_value("token"), response)) return;
  server.stream(request, response, [this, seen = lastSeen(request)]() mutable { return next(seen); });
}

void WebServer::Service::servePage(const std::string& path, Response& response) const {
  for (const zentaro::http::PageFile& file : pageFiles()) {
    if (file.path != path) continue;
    std::string content{file.content};
    if (const std::size_t mark = content.find(tokenMark); mark != std::string::npos)
      content.replace(mark, tokenMark.size(), token_);
    return response.set_content(content, std::string{file.type});
  }
  answer(response, 404, say("aquí no hay nada; la página es /", "there is nothing here; the page is /"));
}

bool WebServer::Service::hasToken(const std::string& given, Response& response) const {
  if (given == token_) return true;
  answer(response, 403,
         say("esta página es de una impresora anterior; cárguela de nuevo",
             "this page is of an earlier printer; load it again"));
  return false;
}

void WebServer::Service::act(const Request& request, Response& response) const {
  if (!hasToken(request.get_header_value("X-Token"), response)) return;
  if (!isOffered(request.body))
    return answer(response, 400, "error: the page may say \"fault PLAN\", \"clear\" and \"sample\"");
  const std::optional<std::string> reply = act_(request.body);
  if (!reply) return answer(response, 503, "error: the printer is busy or ending");
  answer(response, 200, *reply);
}

std::optional<std::string> WebServer::Service::next(std::uint64_t& seen) {
  const std::vector<Feed::Message> messages = feed_.after(seen, heartbeat);
  if (feed_.isClosed()) return std::nullopt;
  if (messages.empty()) return ":\n\n";  // says nothing, and finds out whether the page is still there
  std::this_thread::sleep_for(breath);
  std::string text;
  for (const Feed::Message& message : messages) text += eventText(message);
  seen = messages.back().number;
  return text;
}

WebServer::WebServer(Address address, Feed& feed, Act act) : address_{std::move(address)} {
  try {
    service_ = std::make_unique<Service>(address_, feed, std::move(act));
  } catch (const std::system_error& error) {
    throw std::runtime_error(
        say("--web {}: no se puede escuchar allí ({}); indique otra dirección u otro puerto",
            "--web {}: cannot listen there ({}); name another address or port",
            {authority(address_), zentaro::system::errorText(error.code().value())}));
  }
  address_.port = service_->port();
}

WebServer::~WebServer() = default;

std::string WebServer::url() const { return "http://" + authority(address_) + "/"; }

}  // namespace virtual_printer
