// Running the programs of the build from a test, as a user runs them from a shell.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "common/temporary_folder.h"

namespace zentaro::tools::testing {

struct Ran {
  std::string output;  // standard output and standard error
  int status = -1;
};

/// A folder of the test's own with the user's settings in it, and the programs of the build in front in PATH.
class Shell : public ::testing::Test {
 protected:
  Shell() {
    static const std::string path = std::string(ZENTARO_PROGRAMS) + ":" + std::getenv("PATH");
    ::setenv("PATH", path.c_str(), 1);
    ::setenv("ZENTARO_LANG", "en", 1);
    ::setenv("XDG_STATE_HOME", file("state").c_str(), 1);
    ::setenv("ZENTARO_SETTINGS", file("settings.ini").c_str(), 1);
  }

  std::string file(const std::string& name) const { return (folder.path() / name).string(); }

  static Ran run(const std::string& command) {
    Ran ran;
    // A command that never ends must not hold up the tests.
    std::FILE* output = ::popen(("exec 2>&1; ulimit -t 60; " + command).c_str(), "r");
    std::array<char, 4096> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), output)) {
      ran.output.append(buffer.data(), count);
    }
    const int status = ::pclose(output);
    ran.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return ran;
  }

  static std::string contents(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
  }
  void write(const std::string& name, const std::string& text) const { std::ofstream(file(name)) << text; }

  TemporaryFolder folder;
};

inline bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

}  // namespace zentaro::tools::testing
