// A question that is not to take longer than somebody is willing to wait.
#pragma once

#include <chrono>

#include "platform/services.h"

namespace zentaro::till {

/// While it lives, an operation of the thread that still waits at `end` is given up: it raises Deadline::Over. What the
/// host itself wants done during a wait goes on.
class Deadline : private Host {
 public:
  using Clock = std::chrono::steady_clock;
  struct Over {};

  explicit Deadline(Clock::time_point end) : end_(end) {}

 private:
  void yield() override {
    host_->yield();
    if (Clock::now() >= end_) throw Over{};
  }
  bool wantsYields() const override { return host_->wantsYields(); }
  void errorBox(std::u16string_view title, std::u16string_view text) override {
    host_->errorBox(title, text);
  }
  Services withThisHost() {
    Services changed = services();
    changed.host = this;
    return changed;
  }

  Host* host_ = services().host;
  Clock::time_point end_;
  ServicesScope scope_{withThisHost()};
};

}  // namespace zentaro::till
