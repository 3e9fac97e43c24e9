// Child processes over POSIX; the child is told by the kernel to end when its parent is killed.
#include "base/system/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "base/system/error_text.h"
#include "base/terminal/console.h"
#include "base/terminal/language.h"

namespace zentaro::base {

namespace {

[[noreturn]] void fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

// Runs in the child, where only calls that are safe behind a fork are allowed.
[[noreturn]] void become(char* const* arguments, const char* complaint, int errors, pid_t parent) {
  ::setpgid(0, 0);
  ::prctl(PR_SET_PDEATHSIG, SIGTERM);
  ::signal(SIGPIPE, SIG_DFL);
  if (::getppid() != parent) ::_exit(127);  // killed before it could be asked for
  const int nothing = ::open("/dev/null", O_RDWR);
  ::dup2(nothing, STDIN_FILENO);
  ::dup2(nothing, STDOUT_FILENO);
  ::dup2(errors, STDERR_FILENO);
  ::execvp(arguments[0], arguments);
  for (const char* part : {complaint, ::strerrordesc_np(errno), "\n"}) {
    if (::write(STDERR_FILENO, part, std::strlen(part)) < 0) break;
  }
  ::_exit(127);
}

}  // namespace

int runProgram(std::vector<std::string> words) {
  constexpr int notStarted = 127, signalled = 128;
  const std::vector<char*> arguments = terminal::argumentVector(words);
  pid_t id = 0;
  if (::posix_spawnp(&id, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) return notStarted;
  int status = 0;
  while (::waitpid(id, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : signalled + WTERMSIG(status);
}

void becomeProgram(std::vector<std::string> words, const std::string& variable, const std::string& value) {
  ::setenv(variable.c_str(), value.c_str(), 1);
  ::execvp(words.at(0).c_str(), terminal::argumentVector(words).data());
  throw std::runtime_error(terminal::say("no se puede iniciar {}: {}", "cannot start {}: {}",
                                         {words.at(0), system::errorText(errno)}));
}

std::string companionProgram(const std::string& name) {
  std::error_code failed;
  const auto beside = std::filesystem::read_symlink("/proc/self/exe", failed).parent_path() / name;
  return !failed && ::access(beside.c_str(), X_OK) == 0 ? beside.string() : name;
}

ChildProcess::ChildProcess(const std::vector<std::string>& words) {
  std::vector<std::string> own = words;
  const std::vector<char*> arguments = terminal::argumentVector(own);
  const std::string complaint = terminal::say("no se puede iniciar {}: ", "cannot start {}: ", {words.at(0)});
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) < 0) fail("pipe");
  const pid_t parent = ::getpid();
  id_ = ::fork();
  if (id_ == 0) become(arguments.data(), complaint.c_str(), ends[1], parent);
  const int reason = errno;
  ::close(ends[1]);
  errors_ = ends[0];
  if (id_ > 0) return;
  ::close(static_cast<int>(errors_));
  errno = reason;
  fail("fork");
}

ChildProcess::~ChildProcess() {
  ::kill(static_cast<pid_t>(id_), SIGTERM);
  ignoreErrors();
  while (::waitpid(static_cast<pid_t>(id_), nullptr, 0) < 0 && errno == EINTR) {
  }
  drain_.join();
  ::close(static_cast<int>(errors_));
}

// Signals are the business of the threads that were there before.
void ChildProcess::ignoreErrors() {
  if (drain_.joinable()) return;
  sigset_t all, before;
  ::sigfillset(&all);
  ::pthread_sigmask(SIG_SETMASK, &all, &before);
  drain_ = std::thread([errors = static_cast<int>(errors_)] {
    std::array<char, 4096> unread{};
    ssize_t count = 0;
    do count = ::read(errors, unread.data(), unread.size());
    while (count > 0 || (count < 0 && errno == EINTR));
  });
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

bool ChildProcess::readErrorLine(std::string& line, int milliseconds) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
  line.clear();
  for (;;) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
    pollfd watched{static_cast<int>(errors_), POLLIN, 0};
    if (left <= 0) return false;
    if (::poll(&watched, 1, static_cast<int>(left)) <= 0) continue;
    char character = 0;
    if (::read(watched.fd, &character, 1) <= 0) return false;
    if (character == '\n') return true;
    line += character;
  }
}

}  // namespace zentaro::base
