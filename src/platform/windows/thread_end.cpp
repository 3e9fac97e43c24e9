// What is to be done when a thread ends. A slot of the system's fiber-local storage runs it, before the
// library's own thread-local variables go.
#include "platform/windows/thread_end.h"

#include <memory>
#include <system_error>
#include <vector>

#include "platform/per_thread.h"
#include "platform/windows/system.h"

namespace zentaro {
namespace {

using Ends = std::vector<void (*)()>;

DWORD slot = FLS_OUT_OF_INDEXES;

void WINAPI runEnds(void* list) {
  // Again for what the ends themselves have made anew; the limit is that of POSIX.
  for (int turn = 0; turn < 4 && list != nullptr; ++turn) {
    const std::unique_ptr<Ends> ends(static_cast<Ends*>(list));
    ::FlsSetValue(slot, nullptr);
    for (auto end = ends->rbegin(); end != ends->rend(); ++end) (*end)();
    list = ::FlsGetValue(slot);
  }
}

[[noreturn]] void raise() {
  throw std::system_error(static_cast<int>(::GetLastError()), std::system_category());
}

DWORD slotOfEnds() {
  static const bool made = [] {
    slot = ::FlsAlloc(runEnds);
    if (slot == FLS_OUT_OF_INDEXES) raise();
    return true;
  }();
  static_cast<void>(made);
  return slot;
}

}  // namespace

void atThreadEnd(void (*end)()) {
  const DWORD index = slotOfEnds();
  auto* ends = static_cast<Ends*>(::FlsGetValue(index));
  if (ends == nullptr) {
    auto made = std::make_unique<Ends>();
    if (::FlsSetValue(index, made.get()) == 0) raise();
    ends = made.release();
  }
  ends->push_back(end);
}

void windows::releaseThreadEnds() {
  if (slot != FLS_OUT_OF_INDEXES) ::FlsFree(slot);
  slot = FLS_OUT_OF_INDEXES;
}

}  // namespace zentaro
