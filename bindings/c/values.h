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
const Object& objectOf(const zentaro_object* handle);

/// Raises 13 for a kind that there is not, and what objectOf raises.
Variant variantOf(const zentaro_value& value);
std::vector<Variant> variantsOf(const zentaro_value* values, int32_t count);

/// A value that owns what it holds; raises bad_alloc.
zentaro_value valueOf(const Variant& value);
zentaro_value textValue(std::string_view text);
zentaro_value arrayValue(std::size_t count);

/// Puts `replacement` in the place of what `value` holds, which is given back first.
void replace(zentaro_value& value, zentaro_value replacement);

}  // namespace zentaro::c
