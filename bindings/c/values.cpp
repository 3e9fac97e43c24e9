// Values of the C interface and their like inside.
#include "values.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

#include "automation/automation_error.h"
#include "text/unicode.h"

namespace zentaro::c {

namespace {

using std::size_t;

// Both sides list the kinds in the same order.
static_assert(ZENTARO_EMPTY == static_cast<int>(Variant::Kind::Empty));
static_assert(ZENTARO_DATE == static_cast<int>(Variant::Kind::Date));
static_assert(ZENTARO_OBJECT == static_cast<int>(Variant::Kind::Object));

constexpr int32_t noBounds = -1;
constexpr int deepestNesting = 64;

// Texts and arrays are made by malloc, so that they are given back alike whoever took them out of a value.
template <class T>
T* allocated(size_t count) {
  if (count > std::numeric_limits<int32_t>::max()) throw std::bad_alloc();
  void* memory = std::calloc(count + 1, sizeof(T));
  if (memory == nullptr) throw std::bad_alloc();
  return static_cast<T*>(memory);
}

zentaro_value made(int32_t kind, size_t count = 0) {
  zentaro_value value{};
  value.kind = kind;
  value.count = static_cast<int32_t>(count);
  return value;
}

Variant arrayOf(const zentaro_value& value, int depth) {
  if (depth == deepestNesting) {
    throw AutomationError(static_cast<int>(ErrorNumber::TypeMismatch), u"Zentaro",
                          u"Arrays are nested too deeply");
  }
  if (value.count == noBounds) return Array::withoutBounds();
  return Array(variantsOf(value.as.items, value.count, depth + 1));
}

zentaro_value arrayValueOf(const Array& array) {
  zentaro_value value = arrayValue(array.hasBounds() ? array.items().size() : 0);
  if (!array.hasBounds()) value.count = noBounds;
  try {
    for (int32_t index = 0; index < value.count; ++index) {
      value.as.items[index] = valueOf(array.items()[static_cast<size_t>(index)]);
    }
  } catch (...) {
    clear(value);
    throw;
  }
  return value;
}

}  // namespace

const Object& objectOf(const zentaro_object* handle) {
  if (handle == nullptr) throw AutomationError(ErrorNumber::ObjectNotSet);
  if (handle->thread != std::this_thread::get_id()) {
    throw AutomationError(static_cast<int>(ErrorNumber::InvalidArgument), u"Zentaro",
                          u"The object belongs to another thread");
  }
  return handle->object;
}

Variant variantOf(const zentaro_value& value, int depth) {
  switch (value.kind) {
    case ZENTARO_EMPTY: return {};
    case ZENTARO_NULL: return Variant::null();
    case ZENTARO_MISSING: return Variant::missing();
    case ZENTARO_BOOLEAN: return value.as.boolean != 0;
    case ZENTARO_INT16: return value.as.int16;
    case ZENTARO_INT32: return value.as.int32;
    case ZENTARO_DOUBLE: return value.as.number;
    case ZENTARO_CURRENCY: return Currency::fromScaled(value.as.currency);
    case ZENTARO_DATE: return Date{value.as.number};
    case ZENTARO_TEXT: return utf16({value.as.text, static_cast<size_t>(value.count)});
    case ZENTARO_ARRAY: return arrayOf(value, depth);
    case ZENTARO_OBJECT: return value.as.object == nullptr ? Object() : objectOf(value.as.object);
    default: throw AutomationError(ErrorNumber::TypeMismatch);
  }
}

std::vector<Variant> variantsOf(const zentaro_value* values, int32_t count, int depth) {
  std::vector<Variant> variants;
  variants.reserve(static_cast<size_t>(std::max(count, int32_t{0})));
  for (int32_t index = 0; index < count; ++index) variants.push_back(variantOf(values[index], depth));
  return variants;
}

zentaro_value textValue(std::string_view text) {
  zentaro_value value = made(ZENTARO_TEXT, text.size());
  value.as.text = allocated<char>(text.size());
  std::memcpy(value.as.text, text.data(), text.size());
  return value;
}

zentaro_value arrayValue(size_t count) {
  zentaro_value value = made(ZENTARO_ARRAY, count);
  value.as.items = allocated<zentaro_value>(count);
  return value;
}

zentaro_value valueOf(const Variant& variant) {
  zentaro_value value = made(static_cast<int32_t>(variant.kind()));
  switch (variant.kind()) {
    case Variant::Kind::Empty:
    case Variant::Kind::Null:
    case Variant::Kind::Missing: break;
    case Variant::Kind::Boolean: value.as.boolean = variant.boolean() ? 1 : 0; break;
    case Variant::Kind::Int16: value.as.int16 = variant.int16(); break;
    case Variant::Kind::Int32: value.as.int32 = variant.int32(); break;
    case Variant::Kind::Double: value.as.number = variant.number(); break;
    case Variant::Kind::Single:
      value.kind = ZENTARO_DOUBLE;
      value.as.number = variant.single();
      break;
    case Variant::Kind::Currency: value.as.currency = variant.currency().scaled(); break;
    case Variant::Kind::Date: value.as.number = variant.date().days; break;
    case Variant::Kind::Text: return textValue(utf8(variant.text()));
    case Variant::Kind::Array: return arrayValueOf(variant.array());
    case Variant::Kind::Object:
      if (!variant.object().isNothing()) value.as.object = new zentaro_object{variant.object()};
      break;
  }
  return value;
}

void clear(zentaro_value& value) {
  // The arrays around the current value: each array has an item more than it counts, and behind its last
  // one stands, as the items of that one, the array around it.
  zentaro_value *current = &value, *around = nullptr;
  for (;;) {
    if (current->kind == ZENTARO_ARRAY && current->count > 0) {
      current->as.items[current->count].as.items = around;
      around = current;
      current = &around->as.items[around->count - 1];
      continue;
    }
    if (current->kind == ZENTARO_OBJECT && current->as.object != nullptr) {
      objectOf(current->as.object);  // of this thread
      delete current->as.object;
    }
    if (current->kind == ZENTARO_TEXT) std::free(current->as.text);
    if (current->kind == ZENTARO_ARRAY) std::free(current->as.items);
    *current = {};
    if (around == nullptr) return;
    zentaro_value* const outer = around->as.items[around->count].as.items;
    current = around;
    around = outer;
    --current->count;
  }
}

void replace(zentaro_value& value, zentaro_value replacement) {
  try {
    clear(value);
  } catch (...) {
    clear(replacement);
    throw;
  }
  value = replacement;
}

}  // namespace zentaro::c
