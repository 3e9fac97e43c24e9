// The thread of one end of a chain: a turn whenever something has changed, and each second.
#pragma once

#include <chrono>
#include <exception>
#include <functional>
#include <string>
#include <thread>

#include "base/terminal/language.h"
#include "service/http/bell.h"

namespace zentaro::service {

class Turns {
 public:
  Turns(Bell& bell, std::function<void(const std::string&)> tell, std::function<void()> turn)
      : bell_{bell}, thread_{[this, tell = std::move(tell), turn = std::move(turn)] { run(tell, turn); }} {}
  Turns(const Turns&) = delete;
  Turns& operator=(const Turns&) = delete;
  ~Turns() {
    bell_.close();
    thread_.join();
  }

 private:
  void run(const std::function<void(const std::string&)>& tell, const std::function<void()>& turn) {
    while (!bell_.isClosed()) {
      const std::uint64_t rung = bell_.rung();
      try {
        turn();
      } catch (const std::exception& error) {  // the books: nothing is sent or stored meanwhile
        tell(terminal::say("cadena: {}", "chain: {}", {error.what()}));
      }
      bell_.wait(rung, std::chrono::steady_clock::now() + std::chrono::seconds{1});
    }
  }

  Bell& bell_;
  std::thread thread_;
};

}  // namespace zentaro::service
