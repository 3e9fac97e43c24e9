// A folder for one test, and reading and writing of small files in it.
#pragma once

#include <sys/resource.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace zentaro::testing {

inline std::string contents(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// No file grows larger than that: a write that goes beyond it is cut short, and the next one fails.
class SizeLimit {
 public:
  explicit SizeLimit(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    set(bytes);
  }
  SizeLimit(const SizeLimit&) = delete;
  SizeLimit& operator=(const SizeLimit&) = delete;
  ~SizeLimit() { set(RLIM_INFINITY); }

 private:
  static void set(rlim_t bytes) {
    const rlimit limit{bytes, RLIM_INFINITY};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
};

class Scratch {
 public:
  Scratch() {
    std::string pattern = (std::filesystem::temp_directory_path() / "zentaro-XXXXXX").string();
    path_ = ::mkdtemp(pattern.data());
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
  std::string read(const std::string& name) const { return contents(path_ / name); }
  void write(const std::string& name, const std::string& text) const {
    std::ofstream(path_ / name, std::ios::binary) << text;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace zentaro::testing
