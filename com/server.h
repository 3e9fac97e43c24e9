// The server as a module: who still needs it, where it lies, and its type library.
#pragma once

#include <string>

#include "com/system.h"

namespace zentaro::com {

/// Keeps the server loaded while it exists.
class ServerUse {
 public:
  ServerUse();
  ~ServerUse();
  ServerUse(const ServerUse&) = delete;
  ServerUse& operator=(const ServerUse&) = delete;
};

bool isServerUsed();
void setServerModule(HMODULE module);
std::wstring serverPath();

/// The description with that identifier, of the type library that the server carries; asked by an object of it.
HRESULT typeInfoOf(REFGUID id, ITypeInfo** info);

}  // namespace zentaro::com
