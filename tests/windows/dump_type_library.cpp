// Writes what a type library says, one line for each member with the slots of its accessors, so that it can
// be compared with what it said before: dump_type_library FILE.tlb
#include <cstdio>
#include <string>

#include "com/system.h"
#include "text/unicode.h"

namespace zentaro::com {
namespace {

std::string text(BSTR owned) {
  const Bstr kept(owned);
  return utf8(textOf(owned));
}

std::string text(const GUID& id) {
  wchar_t written[40];
  ::StringFromGUID2(id, written, 40);
  return utf8(narrow(written));
}

std::string nameOf(ITypeInfo& info, MEMBERID member = MEMBERID_NIL) {
  BSTR name = nullptr;
  info.GetDocumentation(member, &name, nullptr, nullptr, nullptr);
  return text(name);
}

std::string helpOf(ITypeInfo& info, MEMBERID member) {
  BSTR help = nullptr;
  info.GetDocumentation(member, nullptr, &help, nullptr, nullptr);
  return text(help);
}

std::string typeOf(ITypeInfo& info, const TYPEDESC& type) {
  switch (type.vt) {
    case VT_PTR: return typeOf(info, *type.lptdesc) + "*";
    case VT_SAFEARRAY: return typeOf(info, *type.lptdesc) + "[]";
    case VT_USERDEFINED: {
      Reference<ITypeInfo> used;
      info.GetRefTypeInfo(type.hreftype, used.out());
      return nameOf(*used.get());
    }
    default: return std::to_string(type.vt);
  }
}

std::string defaultOf(const PARAMDESC& parameter) {
  if ((parameter.wParamFlags & PARAMFLAG_FHASDEFAULT) == 0) return "";
  OwnedVariant value;
  if (FAILED(::VariantChangeType(&value, &parameter.pparamdescex->varDefaultValue, 0, VT_BSTR))) return "=?";
  // Wine reads a Boolean back as one byte.
  if (parameter.pparamdescex->varDefaultValue.vt == VT_BOOL) return "=True";
  return "=\"" + utf8(textOf(value.bstrVal)) + "\"";
}

std::string signatureOf(ITypeInfo& info, const FUNCDESC& function) {
  BSTR names[16] = {};
  UINT count = 0;
  info.GetNames(function.memid, names, 16, &count);
  std::string line;
  for (SHORT index = 0; index < function.cParams; ++index) {
    const ELEMDESC& element = function.lprgelemdescParam[index];
    const USHORT flags = element.paramdesc.wParamFlags;
    const bool isNamed = static_cast<UINT>(index + 1) < count && (flags & PARAMFLAG_FRETVAL) == 0;
    line += (flags & PARAMFLAG_FRETVAL) != 0 ? " -> " : (flags & PARAMFLAG_FOPT) != 0 ? " ?" : " ";
    if (isNamed) line += utf8(textOf(names[index + 1])) + ":";
    line += typeOf(info, element.tdesc) + defaultOf(element.paramdesc);
  }
  for (UINT index = 0; index < count; ++index) ::SysFreeString(names[index]);
  return line;
}

void dumpMembers(ITypeInfo& info, const TYPEATTR& attributes) {
  constexpr SHORT width = sizeof(void*);  // offsets are those of the program that reads

  MEMBERID last = MEMBERID_NIL;
  for (UINT index = 0; index < attributes.cFuncs; ++index) {
    FUNCDESC* function = nullptr;
    if (FAILED(info.GetFuncDesc(index, &function))) continue;
    if (function->oVft / width >= 7) {
      if (function->memid != last)
        std::printf("\n  %s %ld:", nameOf(info, function->memid).c_str(), function->memid);
      last = function->memid;
      std::printf(" %d%c%s", function->oVft / width, "?cg?l???s"[function->invkind],
                  signatureOf(info, *function).c_str());
    }
    info.ReleaseFuncDesc(function);
  }
  for (UINT index = 0; index < attributes.cVars; ++index) {
    VARDESC* variable = nullptr;
    if (FAILED(info.GetVarDesc(index, &variable))) continue;
    std::printf("\n  %s %ld \"%s\"", nameOf(info, variable->memid).c_str(), variable->lpvarValue->lVal,
                helpOf(info, variable->memid).c_str());
    info.ReleaseVarDesc(variable);
  }
}

void dump(ITypeLib& library) {
  TLIBATTR* attributes = nullptr;
  library.GetLibAttr(&attributes);
  BSTR name = nullptr;
  library.GetDocumentation(-1, &name, nullptr, nullptr, nullptr);
  std::printf("%s %s %d.%d", text(name).c_str(), text(attributes->guid).c_str(), attributes->wMajorVerNum,
              attributes->wMinorVerNum);
  library.ReleaseTLibAttr(attributes);
  for (UINT index = 0; index < library.GetTypeInfoCount(); ++index) {
    Reference<ITypeInfo> info, dual;
    library.GetTypeInfo(index, info.out());
    HREFTYPE reference = 0;
    if (SUCCEEDED(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)))
      info->GetRefTypeInfo(reference, dual.out());
    ITypeInfo& shown = dual ? *dual.get() : *info.get();
    TYPEATTR* type = nullptr;
    shown.GetTypeAttr(&type);
    std::printf("\n%s %s kind %d flags %x", nameOf(shown).c_str(), text(type->guid).c_str(), type->typekind,
                type->wTypeFlags);
    dumpMembers(shown, *type);
    shown.ReleaseTypeAttr(type);
  }
  std::printf("\n");
}

}  // namespace
}  // namespace zentaro::com

int wmain(int count, wchar_t** arguments) {
  using namespace zentaro::com;
  ::CoInitialize(nullptr);
  Reference<ITypeLib> library;
  if (count != 2 || FAILED(::LoadTypeLibEx(arguments[1], REGKIND_NONE, library.out()))) return 2;
  dump(*library.get());
  return 0;
}
