// Makes a type library: the enumerations, a dual interface for each class, and the classes.
#include "com/type_library.h"

#include <deque>
#include <map>
#include <string>
#include <system_error>
#include <vector>

#include "com/host_types.h"
#include "com/identifiers.h"
#include "interface/library.h"
#include "text/unicode.h"

namespace zentaro::com {
namespace {

void check(HRESULT result, const std::string& step) {
  if (FAILED(result)) throw std::system_error(result, std::system_category(), step);
}

/// A name or a help text as the calls want it, which take what they never change as changeable.
class WideText {
 public:
  explicit WideText(std::string_view text) : text_(wide(utf16(text))) {}
  operator OLECHAR*() { return text_.data(); }

 private:
  std::wstring text_;
};

template <int... kinds>
constexpr VARTYPE variantTypeOf(ValueType kind, std::integer_sequence<int, kinds...>) {
  VARTYPE type = VT_HRESULT;  // of a member without a result
  ((kind == static_cast<ValueType>(kinds + 1)
        ? void(type = HostType<static_cast<ValueType>(kinds + 1)>::variantType)
        : void()),
   ...);
  return type;
}
constexpr VARTYPE variantTypeOf(ValueType kind) {
  return variantTypeOf(kind, std::make_integer_sequence<int, static_cast<int>(ValueType::Enumeration)>());
}

bool isAssignment(const Member& member) {
  return member.access == Access::Let || member.access == Access::Set;
}

INVOKEKIND invokeKindOf(Access access) {
  switch (access) {
    case Access::Get: return INVOKE_PROPERTYGET;
    case Access::Let: return INVOKE_PROPERTYPUT;
    case Access::Set: return INVOKE_PROPERTYPUTREF;
    case Access::Call: break;
  }
  return INVOKE_FUNC;
}

class Maker {
 public:
  Maker(SYSKIND system, const std::wstring& path) {
    check(::CreateTypeLib2(system, path.c_str(), library_.out()), "CreateTypeLib2");
    check(library_->SetName(WideText(libraryName)), "SetName");
    check(library_->SetGuid(libraryId), "SetGuid");
    check(library_->SetVersion(libraryMajor, libraryMinor), "SetVersion");
    check(library_->SetLcid(LOCALE_NEUTRAL), "SetLcid");
    check(library_->SetDocString(WideText("Zentaro: fiscal printer on a serial line")), "SetDocString");
    Reference<ITypeLib> standard;
    check(::LoadTypeLib(L"stdole2.tlb", standard.out()), "LoadTypeLib stdole2.tlb");
    check(standard->GetTypeInfoOfGuid(IID_IDispatch, dispatch_.out()), "IDispatch");
  }

  void make() {
    for (const EnumerationDescription& enumeration : libraryEnumerations()) addEnumeration(enumeration);
    for (const ClassDescription* description : libraryClasses()) {
      const std::string_view name = description->interfaceName;
      create(name, TKIND_INTERFACE, identifiersOf(description->name).interfaceId, description->help);
    }
    for (const ClassDescription* description : libraryClasses()) addInterface(*description);
    for (const ClassDescription* description : libraryClasses()) addClass(*description);
    check(library_->SaveAllChanges(), "SaveAllChanges");
  }

 private:
  using TypeInfo = Reference<ICreateTypeInfo>;

  TypeInfo create(std::string_view name, TYPEKIND kind, const GUID& id, std::string_view help) {
    TypeInfo type;
    check(library_->CreateTypeInfo(WideText(name), kind, type.out()), std::string(name));
    check(type->SetGuid(id), "SetGuid");
    check(type->SetVersion(libraryMajor, libraryMinor), "SetVersion");
    if (!help.empty()) check(type->SetDocString(WideText(help)), "SetDocString");
    types_.emplace(name, type);
    return type;
  }

  /// A reference from one type to another one of this library.
  HREFTYPE referenceTo(std::string_view name, const TypeInfo& from) {
    Reference<ITypeInfo> info;
    check(types_.at(std::string(name))->QueryInterface(IID_ITypeInfo, info.outAny()), std::string(name));
    HREFTYPE reference = 0;
    check(from->AddRefTypeInfo(info.get(), &reference), std::string(name));
    return reference;
  }

  void addEnumeration(const EnumerationDescription& enumeration) {
    const EnumerationIdentifier* known = enumerationIdentifiers;
    while (known->name != enumeration.name) ++known;
    const TypeInfo type = create(enumeration.name, TKIND_ENUM, known->id, enumeration.help);
    UINT index = 0;
    for (const EnumerationValue& value : enumeration.values) {
      VARIANT constant;
      constant.vt = VT_I4;
      constant.lVal = value.value;
      VARDESC description{};
      description.memid = 0x40000000 + static_cast<MEMBERID>(index);
      description.varkind = VAR_CONST;
      description.lpvarValue = &constant;
      description.elemdescVar.tdesc.vt = VT_I4;
      check(type->AddVarDesc(index, &description), std::string(value.name));
      check(type->SetVarName(index, WideText(value.name)), std::string(value.name));
      check(type->SetVarDocString(index, WideText(value.help)), std::string(value.name));
      ++index;
    }
    check(type->LayOut(), std::string(enumeration.name));
  }

  void addInterface(const ClassDescription& description) {
    const TypeInfo type = types_.at(std::string(description.interfaceName));
    HREFTYPE base = 0;
    check(type->AddRefTypeInfo(dispatch_.get(), &base), "AddRefTypeInfo");
    check(type->AddImplType(0, base), "AddImplType");
    check(type->SetTypeFlags(TYPEFLAG_FDUAL | TYPEFLAG_FOLEAUTOMATION | TYPEFLAG_FDISPATCHABLE |
                             TYPEFLAG_FHIDDEN),
          "SetTypeFlags");
    std::size_t first = 0;  // of the accessors of the member at `index`
    for (std::size_t index = 0; index < description.members.size(); ++index) {
      if (description.members[index].name != description.members[first].name) first = index;
      addMember(description.members[index], static_cast<UINT>(index), dispatchId(static_cast<int>(first)),
                type);
    }
    check(type->LayOut(), std::string(description.interfaceName));
  }

  /// A member as the calls want it: what their descriptions point to stands in here.
  class Function {
   public:
    Function(Maker& maker, const TypeInfo& type, const Member& member) : maker_(maker), type_(type) {
      texts_.emplace_back(member.name);
      for (const Parameter& parameter : member.parameters) {
        add(parameter);
        texts_.emplace_back(parameter.name);
      }
      if (isAssignment(member)) {
        add(member.newValue);  // its name is always the same in a type library
      } else if (member.result.kind != ValueType::None) {
        ELEMDESC& element = elements_.emplace_back();
        element.tdesc = pointerTo(described(member.result));
        element.paramdesc.wParamFlags = PARAMFLAG_FOUT | PARAMFLAG_FRETVAL;
      }
      description_.funckind = FUNC_PUREVIRTUAL;
      description_.invkind = invokeKindOf(member.access);
      description_.callconv = CC_STDCALL;
      description_.cParams = static_cast<SHORT>(elements_.size());
      description_.lprgelemdescParam = elements_.data();
      description_.elemdescFunc.tdesc.vt = VT_HRESULT;
    }

    FUNCDESC& description() { return description_; }
    std::vector<OLECHAR*> names() { return {texts_.begin(), texts_.end()}; }

   private:
    TYPEDESC pointerTo(const TYPEDESC& target) {
      TYPEDESC pointer{};
      pointer.vt = VT_PTR;
      pointer.lptdesc = &pointers_.emplace_back(target);
      return pointer;
    }

    TYPEDESC described(const Type& wanted) {
      TYPEDESC description{};
      description.vt = variantTypeOf(wanted.kind);
      if (wanted.kind == ValueType::Array) {
        description.vt = VT_SAFEARRAY;
        description.lptdesc = &pointers_.emplace_back();
        description.lptdesc->vt = VT_VARIANT;
      }
      if (wanted.kind == ValueType::Enumeration) {
        description.vt = VT_USERDEFINED;
        description.hreftype = maker_.referenceTo(wanted.name, type_);
      }
      if (wanted.kind == ValueType::Object) {
        description.vt = VT_USERDEFINED;
        description.hreftype = maker_.referenceTo(findClass(wanted.name)->interfaceName, type_);
        return pointerTo(description);
      }
      return description;
    }

    void add(const Parameter& parameter) {
      const bool isReference = parameter.passing == Passing::ByReference;
      ELEMDESC& element = elements_.emplace_back();
      element.tdesc = isReference ? pointerTo(described(parameter.type)) : described(parameter.type);
      element.paramdesc.wParamFlags =
          static_cast<USHORT>(PARAMFLAG_FIN | (isReference ? PARAMFLAG_FOUT : PARAMFLAG_NONE));
      if (!parameter.isOptional()) return;
      ++description_.cParamsOpt;
      element.paramdesc.wParamFlags |= PARAMFLAG_FOPT;
      if (parameter.fallback.kind == Default::Kind::Missing) return;
      element.paramdesc.wParamFlags |= PARAMFLAG_FHASDEFAULT;
      element.paramdesc.pparamdescex =
          &defaults_.emplace_back(PARAMDESCEX{sizeof(PARAMDESCEX), defaultOf(parameter.fallback, values_)});
    }

    Maker& maker_;
    const TypeInfo& type_;
    FUNCDESC description_{};
    std::deque<TYPEDESC> pointers_;
    std::deque<PARAMDESCEX> defaults_;
    std::deque<OwnedVariant> values_;
    std::vector<ELEMDESC> elements_;
    std::deque<WideText> texts_;
  };

  void addMember(const Member& member, UINT index, MEMBERID id, const TypeInfo& type) {
    Function function(*this, type, member);
    function.description().memid = id;
    const std::string name(member.name);
    check(type->AddFuncDesc(index, &function.description()), name);
    std::vector<OLECHAR*> names = function.names();
    check(type->SetFuncAndParamNames(index, names.data(), static_cast<UINT>(names.size())), name);
    if (!member.help.empty()) check(type->SetFuncDocString(index, WideText(member.help)), name);
  }

  static VARIANT defaultOf(const Default& fallback, std::deque<OwnedVariant>& values) {
    OwnedVariant& value = values.emplace_back();
    switch (fallback.kind) {
      case Default::Kind::None:
      case Default::Kind::Missing: break;
      case Default::Kind::Zero:
        value.vt = VT_I2;
        value.iVal = 0;
        break;
      case Default::Kind::EmptyText:
      case Default::Kind::Text:
        value.bstrVal = makeBstr(utf16(fallback.text));
        value.vt = VT_BSTR;
        break;
      case Default::Kind::True:
        value.boolVal = VARIANT_TRUE;
        value.vt = VT_BOOL;
        break;
    }
    return value;
  }

  void addClass(const ClassDescription& description) {
    const TypeInfo type =
        create(description.name, TKIND_COCLASS, identifiersOf(description.name).classId, description.help);
    check(type->AddImplType(0, referenceTo(description.interfaceName, type)), "AddImplType");
    check(type->SetImplTypeFlags(0, IMPLTYPEFLAG_FDEFAULT), "SetImplTypeFlags");
    if (description.create != nullptr) check(type->SetTypeFlags(TYPEFLAG_FCANCREATE), "SetTypeFlags");
    check(type->LayOut(), std::string(description.name));
  }

  Reference<ICreateTypeLib2> library_;
  Reference<ITypeInfo> dispatch_;
  std::map<std::string, TypeInfo> types_;
};

}  // namespace

void makeTypeLibrary(SYSKIND system, const std::wstring& path) { Maker(system, path).make(); }

}  // namespace zentaro::com
