// The program as its own process, and a host on its line.
#pragma once

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>

#include "base/files/descriptor.h"
#include "support/process.h"

namespace program {

using namespace std::chrono_literals;
using namespace zentaro::testing;
using zentaro::files::Descriptor;

inline std::string readFor(int descriptor, const std::function<bool(const std::string&)>& isEnough) {
  std::string text;
  pollfd watched{descriptor, POLLIN, 0};
  while (!isEnough(text) && ::poll(&watched, 1, 10'000) > 0) {
    std::array<char, 4096> buffer{};
    const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
    if (count <= 0) break;
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return text;
}

struct Printer : Process {
  explicit Printer(std::vector<std::string> options) : Process(words(std::move(options))) {}
  bool isReady() const { return says("ready: "); }

 private:
  static std::vector<std::string> words(std::vector<std::string> options) {
    options.insert(options.begin(), "zentaro-printer");
    return options;
  }
};

inline Descriptor dialled(int tcpPort) {
  Descriptor client{::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
  const sockaddr_in address{
      AF_INET, htons(static_cast<std::uint16_t>(tcpPort)), {htonl(INADDR_LOOPBACK)}, {}};
  EXPECT_EQ(::connect(client.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  return client;
}

// A host on the line; gives the data fields of the answer.
class Port {
 public:
  explicit Port(const std::string& device) : line_{::open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)} {}
  explicit Port(int tcpPort) : line_{dialled(tcpPort)} {}
  bool isOpen() const { return line_.isOpen(); }
  int get() const { return line_.get(); }

  std::string say(const std::string& line) {
    const std::string frame = commandFrame('"', line);
    EXPECT_EQ(::write(line_.get(), frame.data(), frame.size()), static_cast<ssize_t>(frame.size()));
    const std::string answer = readFor(line_.get(), [](const std::string& text) {
      return text.find('\x03') != std::string::npos && text.size() >= text.find('\x03') + 5;
    });
    std::vector<std::string> parts = split(answer.substr(0, answer.find('\x03')), '\x1C');
    if (parts.size() < 3) return "no answer";
    parts.erase(parts.begin(), parts.begin() + 3);
    return joined(parts, "|");
  }

 private:
  Descriptor line_;
};

inline std::vector<std::string> with(const Scratch& scratch, std::vector<std::string> more = {}) {
  more.insert(more.end(), {"--link", scratch / "port", "--state", scratch / "state.json"});
  return more;
}

}  // namespace program
