// What the server writes into the registry, and takes away again.
#pragma once

#include "com/system.h"

namespace zentaro::com {

/// For whom a server is registered.
enum class Audience { AllUsers, CurrentUser };

/// All users when this process may write for them, else the current one.
Audience possibleAudience();

HRESULT registerServer(Audience audience);
/// Succeeds also when nothing is registered; leaves nothing behind but what the server of the other width needs.
HRESULT unregisterServer(Audience audience);

}  // namespace zentaro::com
