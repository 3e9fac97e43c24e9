// A program that runs beside this one and never outlives it.
#pragma once

#include <sys/types.h>

#include <string>
#include <thread>
#include <vector>

namespace zentaro::tools {

/// The program of that name beside the running one, else the bare name, which is then looked up in PATH.
std::string companionProgram(const std::string& name);

/// What execvp() takes: the words, which must outlive it, and a null pointer.
std::vector<char*> argumentVector(std::vector<std::string>& words);

class ChildProcess {
 public:
  /// Starts `words[0]` with /dev/null as its input and output; its standard error can be read. It is in a process
  /// group of its own, out of reach of Ctrl-C. A program that cannot be started says so there. Raises std::system_error when there is no process to be had.
  explicit ChildProcess(const std::vector<std::string>& words);
  /// Asks it to end (SIGTERM) and waits for it.
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// The next line of its standard error, without the line end. False, with what there is of a line, at its
  /// end or when `milliseconds` are over.
  bool readErrorLine(std::string& line, int milliseconds);
  /// Throws away what it says on standard error from now on, so that it never waits for a reader.
  void discardErrors();

  pid_t id() const { return id_; }

 private:
  pid_t id_ = -1;
  int errors_ = -1;
  std::thread reader_;
};

}  // namespace zentaro::tools
