// The module's own state.
#include "com/server.h"

#include <atomic>

namespace zentaro::com {
namespace {

std::atomic<long> uses = 0;
HMODULE serverModule = nullptr;

}  // namespace

ServerUse::ServerUse() { ++uses; }
ServerUse::~ServerUse() { --uses; }

bool isServerUsed() { return uses != 0; }

void setServerModule(HMODULE module) { serverModule = module; }

std::wstring serverPath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = ::GetModuleFileNameW(serverModule, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) return path.substr(0, length);
    path.resize(path.size() * 2);
  }
}

HRESULT typeInfoOf(REFGUID id, ITypeInfo** info) {
  Reference<ITypeLib> library;
  const HRESULT result = ::LoadTypeLibEx(serverPath().c_str(), REGKIND_NONE, library.out());
  return FAILED(result) ? result : library->GetTypeInfoOfGuid(id, info);
}

}  // namespace zentaro::com
