// The control socket over POSIX.
#include "shell/control_socket.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace printer {
namespace {

[[noreturn]] void fail(const std::string& path) {
  throw std::system_error{errno, std::generic_category(), "--control " + path};
}

sockaddr_un addressOf(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path)
    throw std::runtime_error{"--control " + path + ": the path is too long for a socket"};
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  return address;
}

Descriptor newSocket() {
  return Descriptor{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)};
}

bool isServed(const sockaddr_un& address) {
  const Descriptor probe = newSocket();
  return ::connect(probe.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 ||
         errno == EAGAIN;
}

void makeRoom(const std::string& path, const sockaddr_un& address) {
  const auto type = std::filesystem::symlink_status(path).type();
  if (type == std::filesystem::file_type::not_found) return;
  if (type != std::filesystem::file_type::socket)
    throw std::runtime_error{"--control " + path + ": there is a file; name another path or remove it"};
  if (isServed(address))
    throw std::runtime_error{"--control " + path + ": another printer is using this socket"};
  std::filesystem::remove(path);
}

bool sawSomething(const std::vector<pollfd>& polled, int descriptor) {
  return std::any_of(polled.begin(), polled.end(),
                     [&](const pollfd& entry) { return entry.fd == descriptor && entry.revents != 0; });
}

}  // namespace

ControlSocket::ControlSocket(std::string path) : path_{std::move(path)} {
  const sockaddr_un address = addressOf(path_);
  makeRoom(path_, address);
  listener_ = newSocket();
  if (!listener_.isOpen()) fail(path_);
  if (::bind(listener_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) fail(path_);
  if (::listen(listener_.get(), 8) != 0) fail(path_);
}

ControlSocket::~ControlSocket() { ::unlink(path_.c_str()); }

void ControlSocket::watch(std::vector<pollfd>& watched) const {
  watched.push_back({listener_.get(), POLLIN, 0});
  for (const Client& client : clients_) watched.push_back({client.descriptor.get(), POLLIN, 0});
}

void ControlSocket::serve(const std::vector<pollfd>& polled,
                          const std::function<std::string(const std::string&)>& reply) {
  clients_.remove_if([&](Client& client) {
    return sawSomething(polled, client.descriptor.get()) && !serveClient(client, reply);
  });
  if (!sawSomething(polled, listener_.get())) return;
  Descriptor accepted{::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK)};
  if (accepted.isOpen()) clients_.push_back({std::move(accepted), {}});
}

// False when the client has gone.
bool ControlSocket::serveClient(Client& client, const std::function<std::string(const std::string&)>& reply) {
  std::array<char, 1024> buffer{};
  const ssize_t count = ::read(client.descriptor.get(), buffer.data(), buffer.size());
  if (count <= 0) return count < 0 && (errno == EAGAIN || errno == EINTR);
  for (const std::string& line : client.lines.feed({buffer.data(), static_cast<std::size_t>(count)})) {
    const std::string text = reply(line) + "\n";
    ::send(client.descriptor.get(), text.data(), text.size(), MSG_NOSIGNAL);
  }
  return true;
}

}  // namespace printer
