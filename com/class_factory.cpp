// Class objects.
#include "com/class_factory.h"

#include <atomic>

#include "automation/description.h"
#include "com/errors.h"
#include "com/instance.h"
#include "interface/library.h"

namespace zentaro::com {
namespace {

std::atomic<long> locks = 0;

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const ClassDescription& description) : description_(description) {}

  STDMETHODIMP QueryInterface(REFIID id, void** result) override {
    if (result == nullptr) return E_POINTER;
    *result = id == IID_IUnknown || id == IID_IClassFactory ? this : nullptr;
    if (*result == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** result) override {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    return guarded(
        [&] {
          Reference<IDispatch> made;
          *made.out() = hostObject(Object(description_, description_.create()));
          return made->QueryInterface(id, result);
        },
        [&](const Failure& failure) { return reported(failure, id); });
  }
  STDMETHODIMP LockServer(BOOL lock) override {
    locks += lock != 0 ? 1 : -1;
    return S_OK;
  }

 private:
  ~ClassFactory() = default;

  ServerUse use_;
  const ClassDescription& description_;
  std::atomic<ULONG> references_ = 1;
};

}  // namespace

HRESULT getClassObject(REFCLSID classId, REFIID interfaceId, void** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  for (const ClassIdentifiers& identifiers : classIdentifiers) {
    const ClassDescription* const description = findClass(identifiers.name);
    if (identifiers.classId != classId || description->create == nullptr) continue;
    return guarded([&] {
      Reference<ClassFactory> factory;
      *factory.out() = new ClassFactory(*description);
      return factory->QueryInterface(interfaceId, result);
    });
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

bool isServerLocked() { return locks != 0; }

}  // namespace zentaro::com
