// Start-up of the programs against that of the least program there is, and the memory of a printer object.
#include <fcntl.h>
#include <malloc.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <optional>

#include "figures.h"
#include "library.h"
#include "line.h"
#include "measure.h"
#include "sections.h"

namespace bench {
namespace {

std::string beside(const char* program) {
  return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / program).string();
}

/// Starts the program, gives it the input, and waits for the first byte of its output.
double secondsToFirstByte(const std::vector<const char*>& words, std::string_view input) {
  std::array<int, 2> in{}, out{};
  if (::pipe2(in.data(), O_CLOEXEC) != 0 || ::pipe2(out.data(), O_CLOEXEC) != 0) return 0;
  posix_spawn_file_actions_t ends;
  ::posix_spawn_file_actions_init(&ends);
  ::posix_spawn_file_actions_adddup2(&ends, in[0], STDIN_FILENO);
  ::posix_spawn_file_actions_adddup2(&ends, out[1], STDOUT_FILENO);
  const double begin = wallSeconds();
  pid_t child = 0;
  const bool isStarted =
      ::posix_spawn(&child, words[0], &ends, nullptr, const_cast<char* const*>(words.data()), environ) == 0;
  ::posix_spawn_file_actions_destroy(&ends);
  ::close(in[0]);
  ::close(out[1]);
  if (!isStarted || ::write(in[1], input.data(), input.size()) < 0) return 0;
  char byte = 0;
  const bool came = ::read(out[0], &byte, 1) >= 0;  // the end of the output is the end, too
  const double end = wallSeconds();
  ::close(in[1]);
  while (came && ::read(out[0], &byte, 1) > 0) {
  }
  ::close(out[0]);
  ::waitpid(child, nullptr, 0);
  return end - begin;
}

/// Of the printers beyond the first, which also brings what a thread has once.
void showMemory() {
  const std::array<SilentLine, 8> lines;
  std::array<std::optional<Library>, 8> printers;
  std::size_t before = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    printers[i].emplace(lines[i].device(), 2, static_cast<int>(i) + 1);
    if (i == 0) before = ::mallinfo2().uordblks;
  }
  const std::size_t bytes = (::mallinfo2().uordblks - before) / (lines.size() - 1);
  std::printf("memory of an open printer object: %zu bytes\n", bytes);
  expectAtMost("bytes of a printer object", static_cast<double>(bytes), 400);
}

}  // namespace

void measurePrograms(bool isShort) {
  const std::string zentaro = beside("zentaro");
  constexpr std::string_view request =
      R"({"jsonrpc":"2.0","id":1,"method":"create","params":{"class":"Zentaro.CZentaro"}})"
      "\n";
  std::vector<double> least, host, help;
  for (int round = 0; round < (isShort ? 5 : 51); ++round) {
    least.push_back(secondsToFirstByte({"/bin/true", nullptr}, ""));
    host.push_back(secondsToFirstByte({zentaro.c_str(), "host", nullptr}, request));
    help.push_back(secondsToFirstByte({zentaro.c_str(), "--help", nullptr}, ""));
  }
  std::printf("start-up, milliseconds: p50 (p99)\n");
  const auto show = [&](const char* name, const std::vector<double>& times) {
    std::printf("  %-40s %6.2f (%.2f), %5.2f times /bin/true\n", name, median(times) * 1e3,
                percentile(times, 0.99) * 1e3, median(times) / median(least));
    expectAtMost(name, median(times) / median(least), 10);
  };
  show("/bin/true", least);
  show("zentaro host, to its first answer", host);
  show("zentaro --help", help);

  showMemory();
}

}  // namespace bench
