// Wakes the loop while it waits: rung by other threads and by what asks the program to end.
#pragma once

#include "virtual-printer/line/socket.h"

namespace virtual_printer {

class Wake {
 public:
  /// Throws std::runtime_error when the system has no descriptor to give.
  Wake();

  /// May be called by a signal handler.
  void ring() const noexcept;
  /// Becomes readable when it was rung.
  Handle handle() const { return bell_.handle(); }
  void quiet() const;

 private:
  Socket bell_;
};

}  // namespace virtual_printer
