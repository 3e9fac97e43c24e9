// What becomes of an exception at the border to C: the thread's last error, and its number.
#pragma once

#include <new>
#include <string>

#include "automation/automation_error.h"
#include "text/unicode.h"
#include "zentaro_c.h"

namespace zentaro::c {

/// Keeps it as the thread's last error; gives its number.
ZENTARO_API int32_t failed(int32_t number, std::string source, std::string description);

/// Runs `work`; what it raises becomes the thread's last error and its number.
template <class Work>
int32_t guarded(const Work& work) noexcept {
  constexpr int outOfMemory = 7, internalError = 51;
  try {
    work();
    return 0;
  } catch (const AutomationError& error) {
    return failed(error.number(), utf8(error.source()), error.what());
  } catch (const std::bad_alloc&) {
    return failed(outOfMemory, "Zentaro", "Out of memory");
  } catch (const std::exception& error) {
    return failed(internalError, "Zentaro", error.what());
  }
}

}  // namespace zentaro::c
