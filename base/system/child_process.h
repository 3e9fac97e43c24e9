// A program that runs beside this one and never outlives it.
#pragma once

#include <cstdint>
#include <string>
#include <thread>
#include <vector>

namespace zentaro::base {

/// The program of that name beside the running one, else the bare name, which is then looked up in PATH.
std::string companionProgram(const std::string& name);

/// Runs a program on this one's own terminal and waits for it. Its exit status; 127 when it cannot be started, 128 and
/// the signal when one ended it.
int runProgram(std::vector<std::string> words);

/// Goes on as another program in this one's place, on its terminal, which finds the variable in its environment. Raises
/// std::runtime_error when it cannot be started.
[[noreturn]] void becomeProgram(std::vector<std::string> words, const std::string& variable,
                                const std::string& value);

class ChildProcess {
 public:
  /// Starts `words[0]` with an empty input and an output that goes nowhere, in a process group of its own, so that
  /// Ctrl-C does not reach it; its standard error can be read. A program that cannot be started says so there.
  /// Raises std::system_error when there is no process to be had.
  explicit ChildProcess(const std::vector<std::string>& words);
  /// Asks it to end and waits for it: by SIGTERM; on Windows by the line "quit" on its input, and not for ever.
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// The next line of its standard error, without the line end. False, with what there is of a line, at its
  /// end or when `milliseconds` are over.
  bool readErrorLine(std::string& line, int milliseconds);
  /// Lets the program say from now on what it likes: nobody listens, and it never has to wait.
  void ignoreErrors();

 private:
  std::intptr_t id_ = -1, errors_ = -1;  // the system's own kinds of numbers
  std::intptr_t input_ = -1, job_ = -1;  // of Windows alone
  std::thread drain_;
};

}  // namespace zentaro::base
