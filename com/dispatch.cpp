// IDispatch over the class descriptions.
#include <algorithm>
#include <vector>

#include "automation/automation_error.h"
#include "automation/description.h"
#include "com/call.h"
#include "com/errors.h"
#include "text/ascii.h"
#include "text/unicode.h"

namespace zentaro::com {
namespace {

bool isNamed(std::string_view name, const OLECHAR* asked) {
  return equalIgnoringCase(name, utf8(narrow(asked)));
}

/// What the flags of a call ask for; hosts do not tell a read from a call.
Access accessOf(WORD flags, const Member& member) {
  if ((flags & DISPATCH_PROPERTYPUT) != 0) return Access::Let;
  if ((flags & DISPATCH_PROPERTYPUTREF) != 0) return Access::Set;
  return member.access == Access::Call ? Access::Call : Access::Get;
}

bool takesNewValue(Access access) { return access == Access::Let || access == Access::Set; }

/// The arguments in the order of the parameters. Throws 450 for too many; the code is that of an argument that
/// cannot be left out, or whose name is unknown or stands for one that is given already: `wrong` is its index.
HRESULT order(const DISPPARAMS& given, const Member& member, Access access, std::vector<VARIANT*>& ordered,
              UINT& wrong) {
  const auto& parameters = member.parameters;
  VARIANT* newValue = nullptr;
  ordered.assign(parameters.size(), nullptr);
  UINT unnamed = given.cArgs - given.cNamedArgs;
  if (takesNewValue(access) && given.cNamedArgs == 0 && unnamed > 0) {
    newValue = &given.rgvarg[0];
    --unnamed;
  }
  if (unnamed > parameters.size()) throw AutomationError(ErrorNumber::WrongArguments);
  for (UINT index = 0; index < unnamed; ++index) ordered[index] = &given.rgvarg[given.cArgs - 1 - index];
  for (UINT index = 0; index < given.cNamedArgs; ++index) {
    const DISPID id = given.rgdispidNamedArgs[index];
    if (id == DISPID_PROPERTYPUT) {
      newValue = &given.rgvarg[index];
    } else if (id >= 0 && static_cast<std::size_t>(id) < ordered.size() &&
               ordered[static_cast<std::size_t>(id)] == nullptr) {
      ordered[static_cast<std::size_t>(id)] = &given.rgvarg[index];
    } else {
      wrong = index;
      return DISP_E_PARAMNOTFOUND;
    }
  }
  while (!ordered.empty() && ordered.back() == nullptr) ordered.pop_back();
  for (std::size_t index = 0; index < ordered.size(); ++index) {
    if (ordered[index] == nullptr && !parameters[index].isOptional()) return DISP_E_PARAMNOTOPTIONAL;
  }
  if (newValue != nullptr) ordered.push_back(newValue);
  return S_OK;
}

HRESULT STDMETHODCALLTYPE queryInterface(Face* self, REFIID id, void** result) {
  return self->instance->QueryInterface(id, result);
}
ULONG STDMETHODCALLTYPE addRef(Face* self) { return self->instance->AddRef(); }
ULONG STDMETHODCALLTYPE release(Face* self) { return self->instance->Release(); }

HRESULT STDMETHODCALLTYPE getTypeInfoCount(Face*, UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 1;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE getTypeInfo(Face* self, UINT index, LCID, ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  return guarded([&] { return typeInfoOf(self->instance->hostClass().identifiers->interfaceId, info); });
}

HRESULT STDMETHODCALLTYPE getIDsOfNames(Face* self, REFIID reserved, LPOLESTR* names, UINT count, LCID,
                                        DISPID* ids) {
  if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
  return guarded([&] {
    std::fill_n(ids, count, DISPID_UNKNOWN);
    const auto members = self->instance->object().description().members;
    const auto isAsked = [&](const Member& member) { return isNamed(member.name, names[0]); };
    const auto found = std::ranges::find_if(members, isAsked);
    if (found == members.end()) return DISP_E_UNKNOWNNAME;
    ids[0] = dispatchId(static_cast<int>(found - members.begin()));
    HRESULT result = S_OK;
    for (UINT index = 1; index < count; ++index) {
      const auto& parameters = found->parameters;
      const auto* const parameter = std::ranges::find_if(
          parameters, [&](const Parameter& candidate) { return isNamed(candidate.name, names[index]); });
      if (parameter == parameters.end()) {
        result = DISP_E_UNKNOWNNAME;
      } else {
        ids[index] = static_cast<DISPID>(parameter - parameters.begin());
      }
    }
    return result;
  });
}

HRESULT STDMETHODCALLTYPE invoke(Face* self, DISPID id, REFIID reserved, LCID, WORD flags, DISPPARAMS* given,
                                 VARIANT* result, EXCEPINFO* information, UINT* wrongArgument) {
  if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (given == nullptr) return E_INVALIDARG;
  if (result != nullptr) ::VariantInit(result);
  UINT unasked = 0;
  UINT& wrong = wrongArgument != nullptr ? *wrongArgument : unasked;
  Reference<Instance> alive;  // the host may let go of it while the call lets the host run
  self->instance->AddRef();
  *alive.out() = self->instance;
  return guarded(
      [&]() -> HRESULT {
        const auto members = alive->object().description().members;
        const int memberId = memberIdOf(id);
        if (memberId < 0 || static_cast<std::size_t>(memberId) >= members.size())
          return DISP_E_MEMBERNOTFOUND;
        const Member& member = members[static_cast<std::size_t>(memberId)];
        const Access access = accessOf(flags, member);
        std::vector<VARIANT*> arguments;
        const HRESULT ordered = order(*given, member, access, arguments, wrong);
        if (FAILED(ordered)) return ordered;
        try {
          callMember(*alive.get(), memberId, access, arguments, result);
        } catch (const WrongArgument& error) {
          wrong = static_cast<UINT>(error.argument() - given->rgvarg);
          throw;  // with its own number: not every script host knows the system's for it
        }
        return S_OK;
      },
      [&](const Failure& failure) { return reported(failure, information); });
}

}  // namespace

const Slot dispatchSlots[7] = {
    reinterpret_cast<Slot>(queryInterface), reinterpret_cast<Slot>(addRef),
    reinterpret_cast<Slot>(release),        reinterpret_cast<Slot>(getTypeInfoCount),
    reinterpret_cast<Slot>(getTypeInfo),    reinterpret_cast<Slot>(getIDsOfNames),
    reinterpret_cast<Slot>(invoke)};

}  // namespace zentaro::com
