// Failures as result codes and error objects.
#include "com/errors.h"

#include <exception>

#include "automation/automation_error.h"
#include "text/unicode.h"

namespace zentaro::com {
namespace {

Failure failureOf(const AutomationError& error) {
  switch (static_cast<ErrorNumber>(error.number())) {
    case ErrorNumber::NoSuchMember: return {DISP_E_MEMBERNOTFOUND, error.source(), error.description(), true};
    case ErrorNumber::WrongArguments:
      return {DISP_E_BADPARAMCOUNT, error.source(), error.description(), true};
    default: return {resultOf(error.number()), error.source(), error.description()};
  }
}

}  // namespace

Failure currentFailure() noexcept {
  try {
    throw;
  } catch (const AutomationError& error) {
    return failureOf(error);
  } catch (const std::bad_alloc&) {
    return {E_OUTOFMEMORY, {}, {}, true};
  } catch (const std::exception& error) {
    return {E_FAIL, u"Zentaro", utf16(error.what())};
  } catch (...) {
    return {E_UNEXPECTED, u"Zentaro", u"Unexpected error"};
  }
}

HRESULT reported(const Failure& failure, REFIID interfaceId) noexcept {
  Reference<ICreateErrorInfo> made;
  if (FAILED(::CreateErrorInfo(made.out()))) return failure.code;
  made->SetGUID(interfaceId);
  made->SetSource(wide(failure.source).data());
  made->SetDescription(wide(failure.description).data());
  Reference<IErrorInfo> error;
  if (SUCCEEDED(made->QueryInterface(IID_IErrorInfo, error.outAny()))) ::SetErrorInfo(0, error.get());
  return failure.code;
}

HRESULT reported(const Failure& failure, EXCEPINFO* information) noexcept {
  if (failure.isOfTheCall) return failure.code;
  if (information != nullptr) {
    *information = {};
    information->scode = failure.code;
    information->bstrSource = ::SysAllocString(wide(failure.source).c_str());
    information->bstrDescription = ::SysAllocString(wide(failure.description).c_str());
  }
  return DISP_E_EXCEPTION;
}

}  // namespace zentaro::com
