// A local socket for control lines. Several programs may be connected at once.
#pragma once

#include <sys/stat.h>

#include <list>
#include <string>

#include "virtual-printer/line/listener.h"
#include "virtual-printer/shell/control.h"
#include "virtual-printer/shell/served.h"

namespace printer {

class ControlSocket final : public Served {
 public:
  /// Takes the place of a socket that nobody serves any more, never of another file; its owner alone may
  /// connect. Throws std::runtime_error.
  ControlSocket(std::string path, ReplyTo reply);
  ~ControlSocket() override;

  void watch(std::vector<pollfd>& watched) const override;
  void serve(const std::vector<pollfd>& polled) override;

 private:
  struct Client {
    Descriptor descriptor;
    LineReader lines;
  };
  bool serveClient(Client& client);

  std::string path_;
  ReplyTo reply_;
  struct stat made_ {};  // the file of the socket, the only one to be removed
  Listener listener_;
  std::list<Client> clients_;
};

}  // namespace printer
