// A symbolic link under a name of the user's choice to the device of the line, removed at the end.
#pragma once

#include <filesystem>

#include "virtual-printer/line/socket.h"

namespace virtual_printer {

class Link {
 public:
  /// Takes the place of a link that a printer left behind. Throws std::runtime_error when a living printer has
  /// the link, or when anything else stands at the path.
  explicit Link(const std::filesystem::path& path);
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;
  ~Link();

  /// Points the link, at once and atomically, to another device.
  void pointTo(const std::filesystem::path& device);

 private:
  std::filesystem::path path_;
  std::filesystem::path device_;
  Socket mark_;  // tells other printers that the link is served
};

}  // namespace virtual_printer
