// One line to a local socket, and the reply to it.
#include "tools/printer/tell.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "base/system/error_text.h"

namespace zentaro::tools {

namespace {

constexpr int longestWait = 10000;  // milliseconds; a busy machine may take a while

class Client {
 public:
  explicit Client(const std::string& path)
      : path_(path), socket_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) errno = ENAMETOOLONG;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    if (path.size() >= sizeof address.sun_path ||
        ::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
      fail();
  }
  ~Client() { ::close(socket_); }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  void send(const std::string& text) const {
    if (::send(socket_, text.data(), text.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(text.size())) fail();
  }

  /// What has come by the time that a last line stands in it.
  std::string reply() const {
    std::string text;
    pollfd watched{socket_, POLLIN, 0};
    while (!isComplete(text)) {
      if (::poll(&watched, 1, longestWait) == 0) errno = ETIMEDOUT;
      if (watched.revents == 0) fail();
      std::array<char, 4096> buffer{};
      const ssize_t count = ::read(socket_, buffer.data(), buffer.size());
      if (count == 0) errno = ECONNRESET;
      if (count <= 0) fail();
      text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return text;
  }

 private:
  [[noreturn]] void fail() const { throw std::runtime_error(path_ + ": " + system::errorText(errno)); }

  static bool isComplete(const std::string& text) {
    if (!text.ends_with('\n')) return false;
    const std::size_t before = text.rfind('\n', text.size() - 2);
    const std::string last = text.substr(before == std::string::npos ? 0 : before + 1);
    return last.starts_with("ok") || last.starts_with("error");
  }

  std::string path_;
  int socket_;
};

}  // namespace

std::string tell(const std::string& socket, const std::string& line) {
  const Client client(socket);
  client.send(line + "\n");
  return client.reply();
}

}  // namespace zentaro::tools
