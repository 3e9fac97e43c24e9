// The one place where state belongs to a thread: everything that exists once per thread is reached
// through here.
#pragma once

#include <utility>

namespace zentaro {

/// Has the system call `end` when the calling thread ends, after the destructors of the thread's
/// own objects; calls come in reverse order. Not called on a thread that is ended by the end of the
/// program.
void atThreadEnd(void (*end)());

/// The calling thread's own T, made at its first use and destroyed when the thread ends. A printer
/// object may outlive it, as a global one of the main thread does: it gets another T then.
template <class T>
T& perThread() {
  thread_local T* value = nullptr;
  if (value == nullptr) {
    value = new T;
    atThreadEnd([] { delete std::exchange(value, nullptr); });
  }
  return *value;
}

}  // namespace zentaro
