// A socket that clients connect to. Near the limit of descriptors it refuses them, so that they neither keep
// the printer from saving its books nor make it spin.
#pragma once

#include <sys/socket.h>

#include "virtual-printer/line/descriptor.h"
#include "virtual-printer/line/host_line.h"

namespace printer {

class Listener {
 public:
  Listener() = default;
  /// Listens at the address. A failure leaves it closed and errno set.
  Listener(const sockaddr* address, socklen_t length);

  bool isOpen() const { return socket_.isOpen(); }
  int descriptor() const { return socket_.get(); }
  void close() { socket_.close(); }

  void watch(std::vector<pollfd>& watched) const;
  /// The client that the poll saw. Closed when there is none, and when there are too few descriptors left for
  /// it; it has then been sent the refusal.
  Descriptor accept(const std::vector<pollfd>& polled, std::string_view refusal);

 private:
  Descriptor socket_;
  bool isResting_ = false;  // nothing can be accepted just now: passed over by the next poll
};

}  // namespace printer
