// A symbolic link under a name of the user's choice to the device of the line, removed at the end.
#pragma once

#include <filesystem>

namespace printer {

class Link {
 public:
  // Throws std::runtime_error when something other than a symbolic link, or a link to something that is still
  // there, stands at the path.
  explicit Link(std::filesystem::path path);
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;
  ~Link();

  // Points the link, at once and atomically, to another device.
  void pointTo(const std::filesystem::path& device);

 private:
  std::filesystem::path path_;
  std::filesystem::path device_;
};

}  // namespace printer
