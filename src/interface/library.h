// The type library "Zentaro": its classes and enumerations, and the creation of an object by the
// name of its class.
#pragma once

#include <span>
#include <string_view>

#include "automation/description.h"

namespace zentaro {

inline constexpr std::string_view libraryName = "Zentaro";

ZENTARO_API std::span<const ClassDescription* const> libraryClasses();
ZENTARO_API std::span<const EnumerationDescription> libraryEnumerations();

/// "CZentaro" or "Zentaro.CZentaro", without regard to case; null for an unknown class.
ZENTARO_API const ClassDescription* findClass(std::string_view name);

/// Raises 429 for an unknown class and for one that a host cannot create.
ZENTARO_API Object createObject(std::string_view className);

}  // namespace zentaro
