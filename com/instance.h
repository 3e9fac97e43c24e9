// An object of the library as the host sees it: IUnknown, IDispatch and the dual interface of its class.
#pragma once

#include <ocidl.h>

#include <atomic>
#include <optional>

#include "automation/object.h"
#include "com/identifiers.h"
#include "com/server.h"
#include "com/system.h"

namespace zentaro::com {

/// One function of an interface; its real type is in slots.h.
using Slot = void (*)();

/// A class of the library with what it needs as an automation class.
struct HostClass {
  const ClassDescription* description;
  const ClassIdentifiers* identifiers;
  const Slot* table;  // IDispatch, then the members in interface order
};
const HostClass& hostClassOf(const ClassDescription& description);

class Instance;

/// What a client's pointer to the dual interface points to.
struct Face {
  const Slot* table;
  Instance* instance;
};

class Instance final : public ISupportErrorInfo, public IProvideClassInfo {
 public:
  /// With one reference, which is the caller's.
  explicit Instance(Object object);

  const Object& object() const { return object_; }
  const HostClass& hostClass() const { return class_; }
  IDispatch* dispatch() { return reinterpret_cast<IDispatch*>(&face_); }

  STDMETHODIMP QueryInterface(REFIID id, void** result) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override;
  STDMETHODIMP GetClassInfo(ITypeInfo** info) override;

 private:
  ~Instance() = default;

  ServerUse use_;
  Object object_;
  const HostClass& class_;
  Face face_;
  std::atomic<ULONG> references_ = 1;
};

/// A new reference to the object for the host; null for the null reference.
IDispatch* hostObject(const Object& object);

/// The library's object behind a reference of the host's; nothing when it is somebody else's.
std::optional<Object> ownObject(IUnknown& object);

}  // namespace zentaro::com
