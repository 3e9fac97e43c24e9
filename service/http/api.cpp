// From a request to its resource: who asks, whether they may, and what is refused.
#include "service/http/api.h"

#include <algorithm>
#include <charconv>

#include "base/http/refusal.h"
#include "base/terminal/language.h"
#include "service/http/call.h"

namespace zentaro::service {

using terminal::say;

namespace {

std::vector<std::string> wordsOf(std::string_view path) {
  std::vector<std::string> words;
  while (path.starts_with('/')) {
    path.remove_prefix(1);
    const std::size_t end = std::min(path.find('/'), path.size());
    words.emplace_back(path.substr(0, end));
    path.remove_prefix(end);
  }
  return words;
}

// What stands for the names of the pattern; nothing when the path is another.
std::optional<std::vector<std::string>> matched(const std::vector<std::string>& words,
                                                std::string_view pattern) {
  const std::vector<std::string> wanted = wordsOf(pattern);
  if (wanted.size() != words.size()) return std::nullopt;
  std::vector<std::string> names;
  for (std::size_t index = 0; index < words.size(); ++index) {
    if (wanted[index] == "{}")
      names.push_back(words[index]);
    else if (wanted[index] != words[index])
      return std::nullopt;
  }
  return names;
}

std::string_view typeOf(int status) {
  switch (status) {
    case 400: return "bad-request";
    case 403: return "origin";
    case 411: return "length-required";
    case 413: return "too-large";
    case 414: return "address-too-long";
    case 415: return "media-type";
    case 416: return "range";
    case 421: return "wrong-host";
    case 503: return "too-many-streams";
    default: break;
  }
  return "internal";
}

}  // namespace

const std::vector<Api::Route>& Api::routes() {
  static const std::vector<Route> table{
      {"PUT", "/v1/jobs/{}", Access::Token, &Api::putJob},
      {"GET", "/v1/jobs/{}", Access::Read, &Api::getJob},
      {"DELETE", "/v1/jobs/{}", Access::Token, &Api::deleteJob},
      {"PUT", "/v1/jobs/{}/finding", Access::Resolve, &Api::putFinding},
      {"GET", "/v1/jobs", Access::Read, &Api::getJobs},
      {"POST", "/v1/check", Access::Token, &Api::check},
      {"GET", "/v1/printers", Access::Read, &Api::getPrinters},
      {"GET", "/v1/printers/{}", Access::Read, &Api::getPrinter},
      {"GET", "/v1/printers/{}/day", Access::Read, &Api::getDay},
      {"GET", "/v1/tills", Access::Read, &Api::getTills},
      {"GET", "/v1/events", Access::Read, &Api::getEvents},
      {"GET", "/metrics", Access::Read, &Api::getMetrics},
      {"GET", "/health", Access::Open, &Api::getHealth},
  };
  return table;
}

void Api::allowOrigin(const http::Request& request, http::Response& response) const {
  response.set_header("Vary", "Origin");
  const std::string origin = request.get_header_value("Origin");
  if (std::find(parts_.origins.begin(), parts_.origins.end(), origin) == parts_.origins.end()) return;
  response.set_header("Access-Control-Allow-Origin", origin);
  response.set_header("Access-Control-Expose-Headers", "Location, Retry-After");
  if (request.method != "OPTIONS") return;
  response.set_header("Access-Control-Allow-Methods", "GET, PUT, POST, DELETE");
  response.set_header("Access-Control-Allow-Headers", "Authorization, Content-Type, Last-Event-ID");
  response.set_header("Access-Control-Max-Age", "600");
  // Asked by a browser whose page is on the internet and whose service is on this machine.
  if (request.has_header("Access-Control-Request-Private-Network"))
    response.set_header("Access-Control-Allow-Private-Network", "true");
}

void Api::answer(http::Server& server, const http::Request& request, http::Response& response) {
  allowOrigin(request, response);
  try {
    if (request.method == "OPTIONS") {
      response.status = 204;
    } else {
      find(server, request, response);
    }
  } catch (const Problem& problem) {
    service::answer(response, problem);
  } catch (const till::BooksError& error) {
    response.set_header("Retry-After", "5");
    service::answer(response, {503, "books", error.what()});
  }
  parts_.chronicle.answered(response.status);
}

void Api::find(http::Server& server, const http::Request& request, http::Response& response) {
  const std::vector<std::string> words = wordsOf(request.path);
  const std::string method = request.method == "HEAD" ? "GET" : request.method;
  std::string allowed;
  for (const Route& route : routes()) {
    std::optional<std::vector<std::string>> names = matched(words, route.pattern);
    if (!names) continue;
    if (route.method != method) {
      allowed += (allowed.empty() ? "" : ", ") + std::string(route.method);
      continue;
    }
    Call call{server, request, response, std::move(*names), {}};
    if (route.access != Access::Open) letIn(call, route.access);
    return (this->*route.handle)(call);
  }
  if (allowed.empty()) {
    for (const http::PageFile& file : pageFiles())
      if (file.path == request.path) return servePage(file, method, response);
    throw Problem{404, "not-found",
                  say("aquí no hay nada con esa dirección", "there is nothing at this address")};
  }
  response.set_header("Allow", allowed);
  throw Problem{405, "method", say("esta dirección admite {}", "this address takes {}", {allowed})};
}

void Api::letIn(Call& call, Access access) {
  const std::optional<Token> token = parts_.tokens.find(call.request.get_header_value("Authorization"));
  if (!token) {
    call.response.set_header("WWW-Authenticate", "Bearer");
    throw Problem{
        401, "unauthorized",
        say("falta un token válido: Authorization: Bearer TOKEN; lo hace zentaro serve token add",
            "a valid token is missing: Authorization: Bearer TOKEN; zentaro serve token add makes one")};
  }
  call.token = *token;
  if (access == Access::Read) call.need(Right::Read);
  if (access == Access::Resolve) call.need(Right::Resolve);
}

void Api::refuse(const http::Request& request, http::Response& response, int status) const {
  allowOrigin(request, response);
  service::answer(response, {status, typeOf(status), http::refusalText(status)});
  parts_.chronicle.answered(status);
}

void Api::Call::need(Right right) const {
  if (token.may(right)) return;
  throw Problem{403, "forbidden",
                say("el token \"{}\" no tiene el permiso {}", "the token \"{}\" lacks the right {}",
                    {token.name, nameOf(right)})};
}

int Api::Call::number(const char* name, int least, int most, int fallback) const {
  if (!request.has_param(name)) return fallback;
  const std::string text = request.get_param_value(name);
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc{} && end == text.data() + text.size() && value >= least && value <= most)
    return value;
  throw Problem{400, "bad-request",
                say("{} debe ser un número de {} a {}", "{} must be a number from {} to {}",
                    {name, std::to_string(least), std::to_string(most)})};
}

}  // namespace zentaro::service
