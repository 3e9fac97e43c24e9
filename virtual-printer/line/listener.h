// A socket that clients connect to. Near the limit of descriptors it refuses them, so that they neither keep
// the printer from saving its books nor make it spin.
#pragma once

#include "virtual-printer/line/socket.h"

namespace virtual_printer {

class Listener {
 public:
  explicit Listener(Socket listening = Socket{}) : socket_{std::move(listening)} {}

  void close() { socket_.close(); }

  void watch(WatchList& watched) const;
  /// The client that was seen. Closed when there is none, and when there are too few descriptors left for it; it
  /// has then been sent the refusal.
  Socket accept(const WatchList& watched, std::string_view refusal);

 private:
  Socket socket_;
  bool isResting_ = false;  // nothing can be accepted just now: passed over by the next turn
};

}  // namespace virtual_printer
