// Values of the library as JSON and back:
//
//   "text"  12  12.5  true  null  [..]              text, Int32, double, Boolean, Null, array
//   {"type": "empty"}  {"type": "missing"}          Empty, an omitted argument
//   {"type": "currency", "value": "12.3400"}        four decimals
//   {"type": "date", "value": "2024-03-15T14:05:00"}
//   {"type": "double", "value": "NaN"}              also "Infinity" and "-Infinity", which JSON lacks
//   {"type": "object", "class": "Zentaro.statusN", "object": 2}  {"type": "nothing"}
//
// A number with a fraction or an exponent, or outside 32 bits, is a double, and a double is always
// written so.
#pragma once

#include "automation/variant.h"
#include "base/files/json_fwd.h"
#include "tools/host/object_table.h"

namespace zentaro::tools {

/// An object that is not in the table yet is added. Raises 6 for a date outside the years 100 to 9999.
Json jsonOf(const Variant& value, ObjectTable& objects);

/// Raises RpcError InvalidParameters for what is none of the forms above, an unknown object, or
/// arrays nested deeper than 64.
Variant variantOf(const Json& json, const ObjectTable& objects);

}  // namespace zentaro::tools
