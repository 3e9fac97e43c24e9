// Identity and lifetime of an object.
#include "com/instance.h"

#include "automation/description.h"

namespace zentaro::com {

Instance::Instance(Object object)
    : object_(std::move(object)), class_(hostClassOf(object_.description())), face_{class_.table, this} {}

HRESULT Instance::QueryInterface(REFIID id, void** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  if (id == IID_IUnknown || id == IID_IDispatch || id == class_.identifiers->interfaceId) *result = &face_;
  if (id == IID_ISupportErrorInfo) *result = static_cast<ISupportErrorInfo*>(this);
  if (id == IID_IProvideClassInfo) *result = static_cast<IProvideClassInfo*>(this);
  if (id == ownObjectId) *result = this;
  if (*result == nullptr) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

ULONG Instance::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT Instance::InterfaceSupportsErrorInfo(REFIID id) {
  return id == class_.identifiers->interfaceId ? S_OK : S_FALSE;
}

HRESULT Instance::GetClassInfo(ITypeInfo** info) {
  return info == nullptr ? E_POINTER : typeInfoOf(class_.identifiers->classId, info);
}

IDispatch* hostObject(const Object& object) {
  return object.isNothing() ? nullptr : (new Instance(object))->dispatch();
}

std::optional<Object> ownObject(IUnknown& object) {
  void* own = nullptr;
  if (FAILED(object.QueryInterface(ownObjectId, &own))) return std::nullopt;
  auto* const instance = static_cast<Instance*>(own);
  const Object found = instance->object();
  instance->Release();
  return found;
}

}  // namespace zentaro::com
