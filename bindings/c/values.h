// Values of the C interface and their like inside: who owns what changes hands here and nowhere else.
#pragma once

#include <string_view>
#include <thread>
#include <vector>

#include "automation/object.h"
#include "automation/variant.h"
#include "zentaro_c.h"

/// What a host's handle leads to, and the thread that may use it.
struct zentaro_object {
  zentaro::Object object;
  std::thread::id thread = std::this_thread::get_id();
};

namespace zentaro::c {

/// The object behind a handle; raises 91 for NULL and 5 on another thread than the object's.
ZENTARO_API const Object& objectOf(const zentaro_object* handle);

/// Raises 13 for a kind that there is not and for arrays nested deeper than 64, and what objectOf
/// raises. `depth`: how many arrays the value stands in.
Variant variantOf(const zentaro_value& value, int depth = 0);
std::vector<Variant> variantsOf(const zentaro_value* values, int32_t count, int depth = 0);

/// A value that owns what it holds; raises bad_alloc.
zentaro_value valueOf(const Variant& value);
ZENTARO_API zentaro_value textValue(std::string_view text);
zentaro_value arrayValue(std::size_t count);

/// Makes the value Empty without ever going deeper itself, however deep arrays are nested in it. Raises
/// 5 for an object of another thread, which stays where it is.
void clear(zentaro_value& value);

/// Puts `replacement` in the place of what `value` holds, which is given back first.
ZENTARO_API void replace(zentaro_value& value, zentaro_value replacement);

}  // namespace zentaro::c
