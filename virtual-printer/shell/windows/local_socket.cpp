// A TCP port of this machine, which the file at the path names together with a password that only its readers know.
#include "virtual-printer/shell/local_socket.h"

#include <filesystem>
#include <random>
#include <stdexcept>

#include "base/files/careful_file.h"
#include "base/files/paths.h"
#include "base/terminal/language.h"

namespace virtual_printer {
namespace {

using zentaro::files::pathOf;
using zentaro::terminal::say;

std::string newPassword() {
  std::random_device random;
  std::string password;
  for (int part = 0; part < 4; ++part) password += std::to_string(random());
  return password;
}

}  // namespace

LocalSocket::LocalSocket(std::string path) : path_{std::move(path)}, password_{newPassword()} {
  if (std::filesystem::exists(pathOf(path_)) && std::filesystem::file_size(pathOf(path_)) > 100)
    throw std::runtime_error(say("--control {}: ahí hay un archivo; indique otra ruta o retírelo",
                                 "--control {}: there is a file; name another path or remove it", {path_}));
  Address address{"127.0.0.1", 0};
  listener_ = Listener{listenAt(address)};
  zentaro::base::replaceFile(pathOf(path_), std::to_string(address.port) + " " + password_ + "\n");
}

LocalSocket::~LocalSocket() {
  std::error_code ignored;
  const auto own = zentaro::base::contentOf(pathOf(path_));
  if (own && own->find(password_) != std::string::npos) std::filesystem::remove(pathOf(path_), ignored);
}

}  // namespace virtual_printer
