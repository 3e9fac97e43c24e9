// Values on their way between the host and the library.
#pragma once

#include "automation/variant.h"
#include "com/system.h"

namespace zentaro::com {

/// Raises 13 (type mismatch) for what the library has no kind for. A foreign object counts as the
/// value of its default member, an array of JScript's as an array, a whole number of another width as
/// the next one that the library has, a Decimal as Currency where it fits.
Variant fromHost(const VARIANT& value);

/// Fills an empty `result`, which then owns what it holds.
void toHost(const Variant& value, VARIANT& result);

/// Changes the host's variable behind a VT_BYREF argument, converted to the type that it has; raises 13 or 6
/// when it cannot take the value.
void writeBack(const Variant& value, VARIANT& argument);

/// The same kind and the same value; arrays and objects, which no member changes, always count as the same.
bool isSame(const Variant& left, const Variant& right);

}  // namespace zentaro::com
