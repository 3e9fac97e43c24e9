// Accepting and refusing.
#include "virtual-printer/line/listener.h"

#include <algorithm>

namespace virtual_printer {

bool sawSomething(const WatchList& watched, Handle handle) {
  return std::any_of(watched.begin(), watched.end(),
                     [&](const Watched& entry) { return entry.handle == handle && entry.hasSomething; });
}

void Listener::watch(WatchList& watched) const {
  watched.push_back({isResting_ ? noHandle : socket_.handle()});
}

Socket Listener::accept(const WatchList& watched, std::string_view refusal) {
  isResting_ = false;
  if (!socket_.isOpen() || !sawSomething(watched, socket_.handle())) return Socket{};
  Socket accepted = acceptOn(socket_);
  isResting_ = !accepted.isOpen();
  if (!accepted.isOpen() || !isNearLimit(accepted)) return accepted;
  send(accepted, refusal);
  return Socket{};
}

}  // namespace virtual_printer
