// A program that runs beside this one and never outlives it.
#pragma once

#include <sys/types.h>

#include <string>
#include <thread>
#include <vector>

namespace zentaro::base {

/// The program of that name beside the running one, else the bare name, which is then looked up in PATH.
std::string companionProgram(const std::string& name);

/// What execvp() takes: the words, which must outlive it, and a null pointer.
std::vector<char*> argumentVector(std::vector<std::string>& words);

/// Runs a program on this one's own terminal and waits for it. Its exit status; 127 when it cannot be started, 128 and
/// the signal when one ended it.
int runProgram(std::vector<std::string> words);

class ChildProcess {
 public:
  /// Starts `words[0]` with /dev/null as its input and output, in a process group of its own, so that Ctrl-C
  /// does not reach it; its standard error can be read. A program that cannot be started says so there. Raises
  /// std::system_error when there is no process to be had.
  explicit ChildProcess(const std::vector<std::string>& words);
  /// Asks it to end (SIGTERM) and waits for it.
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// The next line of its standard error, without the line end. False, with what there is of a line, at its
  /// end or when `milliseconds` are over.
  bool readErrorLine(std::string& line, int milliseconds);
  /// Lets the program say from now on what it likes: nobody listens, and it never has to wait.
  void ignoreErrors();

 private:
  pid_t id_ = -1;
  int errors_ = -1;
  std::thread drain_;
};

}  // namespace zentaro::base
