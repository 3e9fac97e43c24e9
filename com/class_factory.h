// The class object of a class that a host can create.
#pragma once

#include "com/system.h"

namespace zentaro::com {

/// CLASS_E_CLASSNOTAVAILABLE for an identifier that is no class of the library, or none that can be created.
HRESULT getClassObject(REFCLSID classId, REFIID interfaceId, void** result);
bool isServerLocked();

}  // namespace zentaro::com
