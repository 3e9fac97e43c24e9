// The virtual printer behind a TCP port, as behind a serial device server.
#pragma once

#include "support/process.h"

namespace zentaro::testing {

class TcpPrinter {
 public:
  explicit TcpPrinter(const std::vector<std::string>& options = {}) : process_(words(options)) {
    EXPECT_TRUE(process_.says("ready: ")) << process_.errors();
  }
  std::string device() const {
    constexpr std::string_view ready = "ready: ";
    const std::string said = process_.errors();
    const std::size_t begin = said.find(ready) + ready.size();
    return "tcp://" + said.substr(begin, said.find('\n', begin) - begin);
  }

 private:
  static std::vector<std::string> words(const std::vector<std::string>& options) {
    std::vector<std::string> words{"zentaro-printer", "--quiet", "--lang", "en", "--tcp", "0"};
    words.insert(words.end(), options.begin(), options.end());
    return words;
  }
  Process process_;
};

}  // namespace zentaro::testing
