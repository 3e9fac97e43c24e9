// A device at whose other end a function answers what comes: what the virtual printer would never say.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <string>
#include <thread>

namespace zentaro::testing {

class Responder {
 public:
  using Answer = std::function<std::string(std::string_view heard)>;

  explicit Responder(Answer answer)
      : answer_(std::move(answer)), line_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
    EXPECT_EQ(::grantpt(line_) + ::unlockpt(line_), 0);
    device_ = ::ptsname(line_);
    thread_ = std::thread([this] { serve(); });
  }
  Responder(const Responder&) = delete;
  Responder& operator=(const Responder&) = delete;
  ~Responder() {
    isOver_ = true;
    thread_.join();
    ::close(line_);
  }
  const std::string& device() const { return device_; }

 private:
  void serve() {
    std::array<char, 256> heard{};
    while (!isOver_) {
      const ssize_t count = ::read(line_, heard.data(), heard.size());
      const std::string said = count > 0 ? answer_({heard.data(), static_cast<std::size_t>(count)}) : "";
      if (!said.empty() && ::write(line_, said.data(), said.size()) < 0) return;
      if (count <= 0) std::this_thread::sleep_for(std::chrono::milliseconds(5));  // nobody has it open
    }
  }

  Answer answer_;
  int line_;
  std::string device_;
  std::atomic<bool> isOver_ = false;
  std::thread thread_;
};

/// An answer with that code and these fields, to the command that was heard, whatever that was.
inline std::string answerTo(std::string_view heard, char code, const std::string& fields) {
  std::string frame = std::string("\x02") + (heard.size() > 1 ? heard[1] : ' ') + code + fields + "\x03";
  unsigned sum = 0;
  for (const char byte : frame) sum += static_cast<unsigned char>(byte);
  std::array<char, 5> digits{};
  std::snprintf(digits.data(), digits.size(), "%04X", sum & 0xFFFFU);
  return frame + digits.data();
}

}  // namespace zentaro::testing
