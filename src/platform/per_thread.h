// The one place where state belongs to a thread: everything that exists once per thread is reached through here.
#pragma once

#include <utility>

namespace zentaro {

/// The calling thread's own T, made at its first use and destroyed when the thread ends. Who comes later still, such as the
/// destructor of a global printer object, gets a fresh T that stays until the program ends.
template <class T>
T& perThread() {
  thread_local T* value = nullptr;  // a plain pointer can be read after the thread's objects are gone
  thread_local struct Ending {
    T*& ended;
    ~Ending() { delete std::exchange(ended, nullptr); }
  } ending{value};
  if (value == nullptr) value = new T;
  return *value;
}

}  // namespace zentaro
