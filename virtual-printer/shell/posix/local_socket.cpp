// A UNIX socket.
#include "virtual-printer/shell/local_socket.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <utility>

#include "base/system/error_text.h"
#include "base/terminal/language.h"

namespace virtual_printer {
namespace {

using zentaro::terminal::say;

[[noreturn]] void fail(const std::string& path) {
  throw std::runtime_error("--control " + path + ": " + zentaro::system::errorText(errno));
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

Socket newSocket() { return Socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)); }

bool isServed(const sockaddr_un& address) {
  const Socket probe = newSocket();
  return ::connect(static_cast<int>(probe.handle()), reinterpret_cast<const sockaddr*>(&address),
                   sizeof address) == 0 ||
         errno == EAGAIN;
}

// What the system calls the file.
std::array<std::uint64_t, 2> nameOf(const std::string& path) {
  struct stat found {};
  if (::lstat(path.c_str(), &found) != 0) return {};
  return {found.st_dev, found.st_ino};
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
LocalSocket::LocalSocket(std::string path) : path_{std::move(path)} {
  const sockaddr_un address = addressOf(path_);
  makeRoom(path_, address);
  Socket socket = newSocket();
  const int number = static_cast<int>(socket.handle());
  constexpr int waitingClients = 8;
  const mode_t before = ::umask(0177);
  const bool isBound = ::bind(number, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
                       ::listen(number, waitingClients) == 0;
  const int reason = errno;
  ::umask(before);
  errno = reason;
  if (!isBound) fail(path_);
  made_ = nameOf(path_);
  listener_ = Listener{std::move(socket)};
}

LocalSocket::~LocalSocket() {
  if (nameOf(path_) == made_) ::unlink(path_.c_str());
}

}  // namespace virtual_printer
