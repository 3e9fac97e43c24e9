// What is to be done when a thread ends. A key of the threads library runs it, since that comes
// after the destructors of thread_local objects, and again for what those destructors' users have
// made anew.
#include <pthread.h>

#include <memory>
#include <system_error>
#include <vector>

#include "platform/per_thread.h"

namespace zentaro {
namespace {

using Ends = std::vector<void (*)()>;

extern "C" void runEnds(void* list) {
  const std::unique_ptr<Ends> ends(static_cast<Ends*>(list));
  for (auto end = ends->rbegin(); end != ends->rend(); ++end) (*end)();
}

pthread_key_t keyOfEnds() {
  static const pthread_key_t key = [] {
    pthread_key_t made{};
    if (const int error = ::pthread_key_create(&made, runEnds))
      throw std::system_error(error, std::system_category());
    return made;
  }();
  return key;
}

}  // namespace

void atThreadEnd(void (*end)()) {
  const pthread_key_t key = keyOfEnds();
  auto* ends = static_cast<Ends*>(::pthread_getspecific(key));
  if (ends == nullptr) {
    auto made = std::make_unique<Ends>();
    if (const int error = ::pthread_setspecific(key, made.get()))
      throw std::system_error(error, std::system_category());
    ends = made.release();
  }
  ends->push_back(end);
}

}  // namespace zentaro
