// The system's declarations of automation, and owners of what it hands out.
#pragma once

#include <ole2.h>

#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include "platform/windows/system.h"

// A macro of the system's with a name that others need.
#undef interface

namespace zentaro::com {

using windows::narrow;
using windows::wide;

/// Holds one reference to an object.
template <class T>
class Reference {
 public:
  Reference() = default;
  Reference(const Reference& other) : object_(other.object_) {
    if (object_ != nullptr) object_->AddRef();
  }
  Reference(Reference&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Reference& operator=(Reference other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Reference() {
    if (object_ != nullptr) object_->Release();
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }
  T* release() { return std::exchange(object_, nullptr); }
  /// Where a call puts the reference that it gives; of an empty owner.
  T** out() { return &object_; }
  void** outAny() { return reinterpret_cast<void**>(&object_); }

 private:
  T* object_ = nullptr;
};

inline BSTR makeBstr(std::u16string_view text) {
  BSTR made = ::SysAllocStringLen(nullptr, static_cast<UINT>(text.size()));
  if (made == nullptr) throw std::bad_alloc();
  for (std::size_t index = 0; index < text.size(); ++index) made[index] = static_cast<wchar_t>(text[index]);
  return made;
}

/// The text of a BSTR; null is the empty text.
inline std::u16string_view textOf(BSTR text) {
  return {reinterpret_cast<const char16_t*>(text), ::SysStringLen(text)};
}

struct FreeBstr {
  void operator()(wchar_t* text) const { ::SysFreeString(text); }
};
using Bstr = std::unique_ptr<wchar_t, FreeBstr>;

/// A VARIANT that frees what it holds.
struct OwnedVariant : VARIANT {
  OwnedVariant() { ::VariantInit(this); }
  ~OwnedVariant() { ::VariantClear(this); }
  OwnedVariant(const OwnedVariant&) = delete;
  OwnedVariant& operator=(const OwnedVariant&) = delete;
};

}  // namespace zentaro::com
