// Control lines on a local socket. Several programs may be connected at once.
#pragma once

#include <list>

#include "virtual-printer/shell/control.h"
#include "virtual-printer/shell/local_socket.h"

namespace virtual_printer {

class ControlSocket {
 public:
  /// Throws what LocalSocket throws.
  ControlSocket(std::string path, ReplyTo reply) : place_{std::move(path)}, reply_{std::move(reply)} {}

  void watch(WatchList& watched) const;
  void serve(const WatchList& watched);

 private:
  struct Client {
    Socket socket;
    LineReader lines;
    bool isAdmitted = false;
  };
  bool serveClient(Client& client);

  LocalSocket place_;
  ReplyTo reply_;
  std::list<Client> clients_;
};

}  // namespace virtual_printer
