// What leaves the server when something fails: a result code, and the error's number, source and description.
#pragma once

#include "com/system.h"

namespace zentaro::com {

/// The result code by which every host knows the automation error `number`: Err.Number of VBScript and VBA.
constexpr HRESULT resultOf(int number) {
  return static_cast<HRESULT>(0x800A0000U | (static_cast<unsigned>(number) & 0xFFFFU));
}

struct Failure {
  HRESULT code = S_OK;
  std::u16string source, description;
  /// A failure of the call itself, such as a wrong number of arguments, and not of what it did.
  bool isOfTheCall = false;
};

/// The exception that is being handled, whatever it is.
Failure currentFailure() noexcept;

/// Keeps the failure for a caller who asks for it by GetErrorInfo; gives its code.
HRESULT reported(const Failure& failure, REFIID interfaceId) noexcept;

/// Hands the failure to the caller of IDispatch::Invoke; gives the code that Invoke returns.
HRESULT reported(const Failure& failure, EXCEPINFO* information) noexcept;

/// Nothing thrown by `call` leaves the server: it becomes the code that `report` gives for the failure.
template <class Call, class Report>
HRESULT guarded(Call call, Report report) noexcept {
  try {
    return call();
  } catch (...) {
    return report(currentFailure());
  }
}
/// The same for a call that can only fail for want of memory.
template <class Call>
HRESULT guarded(Call call) noexcept {
  return guarded(call, [](const Failure& failure) { return failure.code; });
}

}  // namespace zentaro::com
