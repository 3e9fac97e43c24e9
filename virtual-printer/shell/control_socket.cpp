// The control socket over POSIX.
#include "virtual-printer/shell/control_socket.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <utility>

#include "base/terminal/language.h"

namespace printer {
namespace {

using zentaro::terminal::say;

[[noreturn]] void fail(const std::string& path) {
  throw std::runtime_error("--control " + path + ": " + std::strerror(errno));
}

sockaddr_un addressOf(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path)
    throw std::runtime_error(say("--control {}: la ruta es demasiado larga para un socket",
                                 "--control {}: the path is too long for a socket", {path}));
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  return address;
}

Descriptor newSocket() {
  return Descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
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
    throw std::runtime_error(say("--control {}: ahí hay un archivo; indique otra ruta o retírelo",
                                 "--control {}: there is a file; name another path or remove it", {path}));
  if (isServed(address))
    throw std::runtime_error(say("--control {}: otra impresora está usando este socket",
                                 "--control {}: another printer is using this socket", {path}));
  std::filesystem::remove(path);
}

}  // namespace

// A socket takes its permissions when it is bound: it is its owner's alone from the first moment.
ControlSocket::ControlSocket(std::string path, ReplyTo reply)
    : path_{std::move(path)}, reply_{std::move(reply)} {
  const sockaddr_un address = addressOf(path_);
  makeRoom(path_, address);
  const mode_t before = ::umask(0177);
  listener_ = Listener{reinterpret_cast<const sockaddr*>(&address), sizeof address};
  const int reason = errno;
  ::umask(before);
  errno = reason;
  if (!listener_.isOpen() || ::stat(path_.c_str(), &made_) != 0) fail(path_);
}

ControlSocket::~ControlSocket() {
  struct stat found {};
  const bool isOwn =
      ::lstat(path_.c_str(), &found) == 0 && found.st_ino == made_.st_ino && found.st_dev == made_.st_dev;
  if (isOwn) ::unlink(path_.c_str());
}

void ControlSocket::watch(std::vector<pollfd>& watched) const {
  listener_.watch(watched);
  for (const Client& client : clients_) watched.push_back({client.descriptor.get(), POLLIN, 0});
}

void ControlSocket::serve(const std::vector<pollfd>& polled) {
  clients_.remove_if(
      [&](Client& client) { return sawSomething(polled, client.descriptor.get()) && !serveClient(client); });
  Descriptor accepted = listener_.accept(polled, say("error: demasiados programas usan este socket\n",
                                                     "error: too many programs use this socket\n"));
  if (accepted.isOpen()) clients_.push_back({std::move(accepted), {}});
}

// False when the client has gone.
bool ControlSocket::serveClient(Client& client) {
  std::array<char, 1024> buffer{};
  const ssize_t count = ::read(client.descriptor.get(), buffer.data(), buffer.size());
  if (count <= 0) return count < 0 && (errno == EAGAIN || errno == EINTR);
  for (const std::string& line : client.lines.feed({buffer.data(), static_cast<std::size_t>(count)})) {
    const std::string text = reply_(line) + "\n";
    ::send(client.descriptor.get(), text.data(), text.size(), MSG_NOSIGNAL);
  }
  return true;
}

}  // namespace printer
