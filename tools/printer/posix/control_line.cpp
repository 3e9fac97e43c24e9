// A socket in the file system, which the owner alone may use: nothing has to be said first.
#include "tools/printer/control_line.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <cerrno>
#include <stdexcept>

#include "base/system/error_text.h"

namespace zentaro::tools {

ControlLine connectToControl(const std::string& path) {
  const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  const bool fits = path.size() < sizeof address.sun_path;
  if (fits && ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
    return {socket, ""};
  const int error = fits ? errno : ENAMETOOLONG;
  http::closeSocket(socket);
  throw std::runtime_error(path + ": " + system::errorText(error));
}

}  // namespace zentaro::tools
