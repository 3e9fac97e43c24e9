// A local socket for control lines. Several programs may be connected at once.
#pragma once

#include <poll.h>

#include <functional>
#include <list>
#include <string>
#include <vector>

#include "line/descriptor.h"
#include "shell/control.h"

namespace printer {

class ControlSocket {
 public:
  // Takes the place of a socket that nobody serves any more, never of another file. Throws std::runtime_error
  // or std::system_error.
  explicit ControlSocket(std::string path);
  ControlSocket(const ControlSocket&) = delete;
  ControlSocket& operator=(const ControlSocket&) = delete;
  ~ControlSocket();

  void watch(std::vector<pollfd>& watched) const;
  // Accepts, reads and replies wherever the poll saw something.
  void serve(const std::vector<pollfd>& polled, const std::function<std::string(const std::string&)>& reply);

 private:
  struct Client {
    Descriptor descriptor;
    LineReader lines;
  };
  bool serveClient(Client& client, const std::function<std::string(const std::string&)>& reply);

  std::string path_;
  Descriptor listener_;
  std::list<Client> clients_;
};

}  // namespace printer
