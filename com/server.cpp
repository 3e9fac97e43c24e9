// The module's own state.
#include "com/server.h"

#include <atomic>
#include <mutex>

namespace zentaro::com {
namespace {

std::atomic<long> uses = 0;
HMODULE serverModule = nullptr;

std::mutex libraryMutex;
Reference<ITypeLib>
    library;  // kept while the server is used; loading it takes a thousand times as long as a call

}  // namespace

ServerUse::ServerUse() { ++uses; }
ServerUse::~ServerUse() {
  if (--uses > 0) return;
  const std::lock_guard lock(libraryMutex);
  if (uses == 0) library = {};
}

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
  const std::lock_guard lock(libraryMutex);
  if (!library) {
    const HRESULT result = ::LoadTypeLibEx(serverPath().c_str(), REGKIND_NONE, library.out());
    if (FAILED(result)) return result;
  }
  return library->GetTypeInfoOfGuid(id, info);
}

}  // namespace zentaro::com
