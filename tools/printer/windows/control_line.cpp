// A TCP port of this machine, which the file at the path names together with a password.
#include "tools/printer/control_line.h"

#include <winsock2.h>

#include <sstream>
#include <stdexcept>

#include "base/files/careful_file.h"
#include "base/files/paths.h"
#include "base/terminal/language.h"
#include "base/terminal/windows/text.h"

namespace zentaro::tools {

ControlLine connectToControl(const std::string& path) {
  std::istringstream content(base::contentOf(files::pathOf(path)).value_or(""));
  u_short port = 0;
  std::string password;
  if (!(content >> port >> password))
    throw std::runtime_error(
        terminal::say("{}: ahí no hay ninguna impresora", "{}: there is no printer", {path}));
  WSADATA data;
  ::WSAStartup(MAKEWORD(2, 2), &data);
  const SOCKET socket = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
  address.sin_port = ::htons(port);
  if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
    http::prepareSocket(static_cast<http::SocketHandle>(socket));
    return {static_cast<http::SocketHandle>(socket), password + "\n"};
  }
  const auto error = static_cast<DWORD>(::WSAGetLastError());
  ::closesocket(socket);
  throw std::runtime_error(path + ": " + terminal::reasonOf(error));
}

}  // namespace zentaro::tools
