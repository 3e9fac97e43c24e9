// Starting the virtual printer, and what the system knows of this process.
#include "peer.h"

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace proof {
namespace {

std::filesystem::path temporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "zentaro-proof-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  return name;
}

}  // namespace

Peer::Peer(const std::vector<std::string>& options) : folder_(temporaryFolder()) {
  const auto program = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "zentaro-printer";
  std::vector<std::string> words{program, "--quiet", "--link", device(), "--state", stateFile()};
  words.insert(words.end(), options.begin(), options.end());
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const std::string log = (folder_ / "errors").string();
  process_ = ::fork();
  if (process_ == 0) {
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (std::freopen("/dev/null", "r", stdin) == nullptr || std::freopen(log.c_str(), "w", stderr) == nullptr)
      ::_exit(126);
    ::execv(arguments[0], arguments.data());
    ::_exit(127);
  }
  for (int tries = 0; tries < 600; ++tries) {
    std::ifstream errors(log);
    for (std::string line; std::getline(errors, line);)
      if (line.find("ready") != std::string::npos || line.find("list") != std::string::npos) return;
    if (::waitpid(process_, nullptr, WNOHANG) != 0) break;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  throw std::runtime_error("the virtual printer is not ready: see " + log);
}

Peer::~Peer() {
  ::kill(process_, SIGTERM);
  ::waitpid(process_, nullptr, 0);
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

std::size_t openDescriptors() {
  const std::filesystem::directory_iterator all("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

std::string descriptorNames() {
  std::string names;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code gone;
    names += std::filesystem::read_symlink(entry.path(), gone).string() + " ";
  }
  return names;
}

long residentKilobytes() {
  std::ifstream status("/proc/self/statm");
  long size = 0, resident = 0;
  status >> size >> resident;
  return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

}  // namespace proof
