// The handler, and what it needs prepared.
#include "base/system/interruption.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstring>

namespace zentaro::base {

namespace {

constexpr std::array endingSignals{SIGINT, SIGTERM, SIGHUP};
constexpr std::size_t longestText = 500;
using Text = std::array<char, longestText + 1>;

std::atomic<int> signalCount = 0;
int instances = 0;
// Two, so that the handler never reads the one that is being written.
std::array<Text, 2> lastWords{};
std::atomic<int> readyWords = 0;
std::array<struct sigaction, endingSignals.size() + 1> previous{};

void copy(const std::string& from, Text& to) {
  const std::size_t length = std::min(from.size(), longestText);
  std::copy_n(from.begin(), length, to.begin());
  to[length] = '\0';
}

[[noreturn]] void endAtOnce() {
  constexpr int exitUnknown = 4;
  const char* words = lastWords[static_cast<std::size_t>(readyWords.load())].data();
  [[maybe_unused]] const auto written = ::write(STDERR_FILENO, words, std::strlen(words));
  ::_exit(exitUnknown);
}

void handle(int) {
  if (signalCount.fetch_add(1) > 0) endAtOnce();
}

}  // namespace

Interruption::Interruption() {
  if (instances++ > 0) return;
  struct sigaction action {};
  action.sa_flags = SA_RESTART;
  for (std::size_t i = 0; i < endingSignals.size(); ++i) {
    action.sa_handler = handle;
    ::sigaction(endingSignals[i], nullptr, &previous[i]);
    if (previous[i].sa_handler != SIG_IGN) ::sigaction(endingSignals[i], &action, nullptr);
  }
  action.sa_handler = SIG_IGN;
  ::sigaction(SIGPIPE, &action, &previous.back());
}

Interruption::~Interruption() {
  if (--instances > 0) return;
  for (std::size_t i = 0; i < endingSignals.size(); ++i) ::sigaction(endingSignals[i], &previous[i], nullptr);
  ::sigaction(SIGPIPE, &previous.back(), nullptr);
}

void Interruption::letWritingFail() { std::signal(SIGXFSZ, SIG_IGN); }

bool Interruption::isRequested() { return signalCount > 0; }

void Interruption::setLastWords(const std::string& text) {
  const int next = 1 - readyWords;
  copy(text, lastWords[static_cast<std::size_t>(next)]);
  readyWords = next;
}

}  // namespace zentaro::base
