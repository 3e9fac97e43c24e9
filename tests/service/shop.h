// A shop for tests: virtual printers and the service as processes of their own, and a client that asks it.
#pragma once

#include <map>
#include <optional>

#include "base/files/json.h"
#include "support/http_client.h"
#include "support/process.h"

namespace zentaro::testing {

struct Answered {
  int status = 0;
  std::string head;
  Json body;

  std::string at(const char* name) const {
    if (!body.is_object() || !body.contains(name)) return "(none)";
    return body[name].is_string() ? body[name].get<std::string>() : body[name].dump();
  }
};

class Shop : public Shell {
 protected:
  Shop() {
    ::setenv("ZENTARO_BOOKS", file("books.db").c_str(), 1);
    write("settings.ini", "[Config\\EPSONZT]\nTimeOutZT=2\n");
    token = addToken("all", "sell,close,resolve,read");
  }
  ~Shop() override { ::unsetenv("ZENTARO_BOOKS"); }

  std::string addToken(const std::string& name, const std::string& rights, const std::string& more = {}) {
    const Ran ran =
        run("zentaro serve token add " + name + " --rights " + rights + " " + more + " 2>/dev/null");
    return ran.output.substr(0, ran.output.find('\n'));
  }

  void printer(const std::string& name, const std::string& serial = {},
               const std::vector<std::string>& more = {}) {
    std::vector<std::string> words{"zentaro-printer", "--quiet",
                                   "--link",          file(name),
                                   "--serial",        serial.empty() ? upper(name) : serial,
                                   "--control",       file(name + ".control"),
                                   "--log",           file(name + ".log"),
                                   "--state",         file(name + ".state")};
    words.insert(words.end(), more.begin(), more.end());
    printers.emplace(name, words);
    ASSERT_TRUE(printers.at(name).says("ready: ")) << printers.at(name).errors();
  }
  static void tell(const std::string& socket, const std::string& line) {
    const Ran told = run("zentaro printer tell " + socket + " '" + line + "'");
    ASSERT_EQ(told.status, 0) << told.output;
  }
  void fault(const std::string& name, const std::string& plan) {
    tell(file(name + ".control"), "fault " + plan);
  }
  void clear(const std::string& name) { tell(file(name + ".control"), "clear"); }

  void serve(std::vector<std::string> more = {}) {
    std::vector<std::string> words{"zentaro", "serve", "--listen", "127.0.0.1:0"};
    for (const auto& [name, process] : printers) {
      words.insert(words.end(), {"--printer", name + "=" + file(name)});
    }
    words.insert(words.end(), more.begin(), more.end());
    service.emplace(words);
    ASSERT_TRUE(service->says("ready: ")) << service->errors();
    const std::string said = service->errors(), ready = "ready: http://127.0.0.1:";
    port = std::stoi(said.substr(said.find(ready) + ready.size()));
  }
  void killService() { service->end(SIGKILL); }

  Answered ask(const std::string& line, const std::string& body = {}, const std::string& headers = {}) const {
    HttpClient client{port};
    client.send(httpRequest(line, "Authorization: Bearer " + token + "\r\n" + headers, body));
    const std::string text = client.receive(std::chrono::seconds{70});
    const std::size_t blank = text.find("\r\n\r\n");
    if (blank == std::string::npos) return {0, text, {}};
    return {httpStatus(text), text.substr(0, blank), Json::parse(text.substr(blank + 4), nullptr, false)};
  }

  /// A sale of one item; what makes it another is its description.
  static std::string sale(const std::string& printer, const std::string& item = "Arepa",
                          const std::string& more = {}) {
    return R"({"printer":")" + printer + R"(",)" + more +
           R"("sale":{"document":"invoice","lines":[{"description":")" + item +
           R"(","price":10,"tax":16}],"payments":[{"amount":20}]}})";
  }
  static std::string closing(const std::string& printer, const std::string& kind,
                             const std::string& more = {}) {
    return R"({"printer":")" + printer + R"(",)" + more + R"("closing":")" + kind + R"("})";
  }
  Answered put(const std::string& id, const std::string& body, int wait = 0) const {
    return ask("PUT /v1/jobs/" + id + "?wait=" + std::to_string(wait), body);
  }
  Answered get(const std::string& id, int wait = 0) const {
    return ask("GET /v1/jobs/" + id + "?wait=" + std::to_string(wait));
  }
  bool becomes(const std::string& id, const std::string& state) const {
    return eventually([&] { return get(id).at("state") == state; });
  }

  /// How often a document with this item was counted, by the printer's own log.
  int papers(const std::string& name, const std::string& item) const {
    std::istringstream log(folder.read(name + ".log"));
    bool isMeant = false;
    int count = 0;
    for (std::string line; std::getline(log, line);) {
      const Json event = Json::parse(line, nullptr, false);
      if (!event.is_object() || !event.contains("name")) continue;
      if (event["event"] == "command" && event["name"] == "item") isMeant = event["fields"][0] == item;
      const bool isClose =
          event["event"] == "answer" && event["name"] == "close" && event["fields"].size() > 1;
      if (isClose && isMeant && event["fields"][0].get<std::string>().starts_with("0000")) ++count;
    }
    return count;
  }

  static std::string upper(std::string text) {
    for (char& letter : text) letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    return text;
  }

  std::map<std::string, Process> printers;
  std::optional<Process> service;
  std::string token;
  int port = 0;
};

}  // namespace zentaro::testing
