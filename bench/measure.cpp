// Counting allocations and system calls.
#include "measure.h"

#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::uint64_t> calls;
}

void* operator new(std::size_t size) {
  calls.fetch_add(1, std::memory_order_relaxed);
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace bench {

std::uint64_t allocations() { return calls.load(std::memory_order_relaxed); }

std::vector<long> systemCalls(const std::function<void()>& work) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    ::raise(SIGSTOP);
    ::syscall(SYS_getppid);  // marks the beginning and the end
    work();
    ::syscall(SYS_getppid);
    ::_exit(0);
  }
  std::vector<long> seen;
  int status = 0, marks = 0;
  bool isEntry = true;
  ::waitpid(child, &status, 0);
  ::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD);
  while (::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr) == 0 && ::waitpid(child, &status, 0) == child &&
         WIFSTOPPED(status)) {
    if (WSTOPSIG(status) != (SIGTRAP | 0x80)) continue;
    user_regs_struct registers{};
    ::ptrace(PTRACE_GETREGS, child, nullptr, &registers);
    const auto call = static_cast<long>(registers.orig_rax);
    if (isEntry && call == SYS_getppid)
      ++marks;
    else if (isEntry && marks == 1)
      seen.push_back(call);
    isEntry = !isEntry;
  }
  return seen;
}

}  // namespace bench
