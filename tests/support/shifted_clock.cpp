// Loaded in front of the C library: the calendar of a program is that of SHIFTED_CLOCK seconds later.
#include <dlfcn.h>
#include <sys/time.h>

#include <cstdlib>
#include <ctime>

namespace {

std::time_t shift() {
  const char* seconds = std::getenv("SHIFTED_CLOCK");
  return seconds == nullptr ? 0 : std::atol(seconds);
}

template <class Call>
Call* next(const char* name) {
  return reinterpret_cast<Call*>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) int clock_gettime(clockid_t clock, timespec* time) noexcept {
  const int status = next<int(clockid_t, timespec*)>("clock_gettime")(clock, time);
  if (clock == CLOCK_REALTIME) time->tv_sec += shift();
  return status;
}

__attribute__((visibility("default"))) std::time_t time(std::time_t* stored) noexcept {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  if (stored != nullptr) *stored = now.tv_sec;
  return now.tv_sec;
}

__attribute__((visibility("default"))) int gettimeofday(timeval* now, void* zone) noexcept {
  const int status = next<int(timeval*, void*)>("gettimeofday")(now, zone);
  now->tv_sec += shift();
  return status;
}
}
