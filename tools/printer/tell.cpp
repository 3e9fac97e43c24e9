// One line to the printer's control lines, and the reply to it.
#include "tools/printer/tell.h"

#include <array>
#include <stdexcept>

#include "base/terminal/language.h"
#include "tools/printer/control_line.h"

namespace zentaro::tools {

namespace {

constexpr std::chrono::seconds longestWait{10};  // a busy machine may take a while

bool isComplete(const std::string& text) {
  if (!text.ends_with('\n')) return false;
  const std::size_t before = text.rfind('\n', text.size() - 2);
  const std::string last = text.substr(before == std::string::npos ? 0 : before + 1);
  return last.starts_with("ok") || last.starts_with("error");
}

class Client {
 public:
  explicit Client(const std::string& path) : line_(connectToControl(path)) {}
  ~Client() { http::closeSocket(line_.socket); }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  bool send(const std::string& line) const {
    const std::string text = line_.greeting + line + "\n";
    return http::sendAll(line_.socket, text.data(), text.size(), http::Clock::now() + longestWait);
  }

  /// What has come by the time that a last line stands in it.
  std::string reply() const {
    std::string text;
    while (!isComplete(text)) {
      std::array<char, 4096> buffer{};
      const auto count =
          http::receiveSome(line_.socket, buffer.data(), buffer.size(), http::Clock::now() + longestWait);
      if (count <= 0) return {};
      text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return text;
  }

 private:
  ControlLine line_;
};

}  // namespace

std::string tell(const std::string& socket, const std::string& line) {
  const Client client(socket);
  std::string reply = client.send(line) ? client.reply() : "";
  if (reply.empty())
    throw std::runtime_error(
        terminal::say("{}: la impresora no respondió", "{}: the printer did not reply", {socket}));
  return reply;
}

}  // namespace zentaro::tools
