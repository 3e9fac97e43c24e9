// A program of the build as a process of its own: what it prints stands in files, what it reads is typed, and
// every wait has a bound.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <functional>
#include <thread>

#include "support/bytes.h"
#include "support/scratch.h"

namespace zentaro::testing {

inline bool eventually(const std::function<bool()>& condition) {
  using namespace std::chrono_literals;
  for (const auto end = std::chrono::steady_clock::now() + 20s; std::chrono::steady_clock::now() < end;) {
    if (condition()) return true;
    std::this_thread::sleep_for(5ms);
  }
  return false;
}

class Process {
 public:
  /// The programs of the build stand in front in PATH.
  explicit Process(std::vector<std::string> words) {
    static const std::string path = std::string(ZENTARO_PROGRAMS) + ":" + std::getenv("PATH");
    ::setenv("PATH", path.c_str(), 1);
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    std::array<int, 2> input{};
    EXPECT_EQ(::pipe2(input.data(), O_CLOEXEC), 0);
    input_ = input[1];
    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawn_file_actions_adddup2(&files, input[0], 0);
    constexpr int create = O_WRONLY | O_CREAT | O_TRUNC | O_APPEND;
    ::posix_spawn_file_actions_addopen(&files, 1, (folder_ / "out").c_str(), create, 0644);
    ::posix_spawn_file_actions_addopen(&files, 2, (folder_ / "err").c_str(), create, 0644);
    EXPECT_EQ(::posix_spawnp(&id_, arguments[0], &files, nullptr, arguments.data(), environ), 0);
    ::posix_spawn_file_actions_destroy(&files);
    ::close(input[0]);
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  ~Process() {
    if (id_ > 0) end(SIGKILL);
    ::close(input_);
  }

  /// Sends the signal, unless it is 0, and waits. Returns the exit status, or minus the signal that ended it.
  int end(int signal = 0) {
    if (signal != 0) ::kill(id_, signal);
    int status = 0;
    ::waitpid(id_, &status, 0);
    id_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }
  pid_t id() const { return id_; }
  void type(const std::string& line) const {
    EXPECT_EQ(::write(input_, line.data(), line.size()), static_cast<ssize_t>(line.size()));
  }
  std::string output() const { return folder_.read("out"); }
  std::string errors() const { return folder_.read("err"); }
  bool says(const std::string& part) const {
    return eventually([&] { return contains(errors(), part); });
  }

 private:
  Scratch folder_;
  int input_ = -1;
  pid_t id_ = 0;
};

struct Ran {
  std::string output;  // standard output and standard error
  int status;
};

/// A folder of the test's own with the user's settings in it, and commands as a user types them.
class Shell : public ::testing::Test {
 protected:
  Shell() {
    ::setenv("ZENTARO_SETTINGS", file("settings.ini").c_str(), 1);
    ::setenv("XDG_STATE_HOME", file("state").c_str(), 1);
    ::setenv("ZENTARO_BOOKS", file("books/books.db").c_str(), 1);
  }

  std::string file(const std::string& name) const { return folder / name; }
  void write(const std::string& name, const std::string& text) const { folder.write(name, text); }

  /// "sale.json": an arepa of 11.60 with tax.
  void writeSale() const {
    write("sale.json", R"({"document": "invoice", "lines": [{"description": "Arepa", "price": 10, "tax": 16}],
      "payments": [{"amount": 20}]})");
  }
  /// As an older version left it, with the sale "K".
  void writeOldJournal() const {
    std::filesystem::create_directories(file("state/zentaro"));
    write(
        "state/zentaro/sales.jsonl",
        R"({"name":"a","at":1700000000,"process":"1:2","id":"K","content":"6c8d6e3e5ba3b0b4","device":"COM1",)"
        R"("machine":"Z1A0000001","creditNote":false,"net":1000,"total":1160,"numberBefore":7,"dayBefore":5000,)"
        R"("lastZ":3,"turn":"close","number":8,"fact":"printed","told":true})"
        "\n");
  }

  static Ran run(const std::string& command) {
    // A command that never ends must not hold up the tests.
    Process shell({"sh", "-c", "exec 2>&1 </dev/null; ulimit -t 60; " + command});
    const int status = shell.end();
    return {shell.output(), status};
  }

  Scratch folder;
};

}  // namespace zentaro::testing
