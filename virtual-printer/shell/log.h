// The log: one JSON object a line, so that a test in any language can read it.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "line/event.h"

namespace printer {

std::string logLine(const Moment& moment, const Event& event);

class LogFile {
 public:
  // Appends to the file. Throws std::system_error when it cannot be opened.
  explicit LogFile(const std::string& path);

  // Written through at once.
  void write(const Moment& moment, const Event& event);

 private:
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::unique_ptr<std::FILE, Closer> file_;
};

}  // namespace printer
