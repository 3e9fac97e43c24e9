// The one place where state belongs to a thread: everything that exists once per thread is reached through here.
#pragma once

namespace zentaro {

/// The calling thread's own T, made at its first use and destroyed when the thread ends.
template <class T>
T& perThread() {
  thread_local T value;
  return value;
}

}  // namespace zentaro
