// Lines in, replies out.
#include "virtual-printer/shell/control_socket.h"

#include "base/terminal/language.h"

namespace virtual_printer {

using zentaro::terminal::say;

void ControlSocket::watch(WatchList& watched) const {
  place_.listener().watch(watched);
  for (const Client& client : clients_) watched.push_back({client.socket.handle()});
}

void ControlSocket::serve(const WatchList& watched) {
  clients_.remove_if(
      [&](Client& client) { return sawSomething(watched, client.socket.handle()) && !serveClient(client); });
  Socket accepted = place_.listener().accept(watched, say("error: demasiados programas usan este socket\n",
                                                          "error: too many programs use this socket\n"));
  if (accepted.isOpen()) clients_.push_back({std::move(accepted), {}, place_.password().empty()});
}

// False when the client has gone.
bool ControlSocket::serveClient(Client& client) {
  const std::optional<std::string> come = receive(client.socket);
  if (!come) return false;
  for (const std::string& line : client.lines.feed(*come)) {
    if (client.isAdmitted)
      send(client.socket, reply_(line) + "\n");
    else if (line == place_.password())
      client.isAdmitted = true;
    else
      return false;
  }
  return true;
}

}  // namespace virtual_printer
