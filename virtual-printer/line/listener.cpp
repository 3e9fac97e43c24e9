// Listening and accepting over POSIX.
#include "virtual-printer/line/listener.h"

#include <netinet/in.h>
#include <sys/resource.h>

namespace printer {
namespace {

// What the printer itself may still want to open: the state file, the paper, a new line after a hang-up.
constexpr rlim_t reserve = 8;
constexpr int waitingClients = 8;

bool isNearLimit(int descriptor) {
  rlimit limit{};
  return ::getrlimit(RLIMIT_NOFILE, &limit) == 0 &&
         static_cast<rlim_t>(descriptor) + reserve >= limit.rlim_cur;
}

}  // namespace

Listener::Listener(const sockaddr* address, socklen_t length)
    : socket_{::socket(address->sa_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)} {
  const int on = 1;
  if (address->sa_family != AF_UNIX) ::setsockopt(socket_.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  if (::bind(socket_.get(), address, length) != 0 || ::listen(socket_.get(), waitingClients) != 0)
    socket_.close();
}

void Listener::watch(std::vector<pollfd>& watched) const {
  watched.push_back({isResting_ ? -1 : socket_.get(), POLLIN, 0});
}

Descriptor Listener::accept(const std::vector<pollfd>& polled, std::string_view refusal) {
  isResting_ = false;
  if (!socket_.isOpen() || !sawSomething(polled, socket_.get())) return Descriptor();
  Descriptor accepted{::accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK)};
  isResting_ = !accepted.isOpen();
  if (!accepted.isOpen() || !isNearLimit(accepted.get())) return accepted;
  ::send(accepted.get(), refusal.data(), refusal.size(), MSG_NOSIGNAL);
  return Descriptor();
}

}  // namespace printer
