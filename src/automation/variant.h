// The value that crosses the automation interface: one of thirteen kinds.
#pragma once

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "automation/currency.h"
#include "automation/date.h"
#include "automation/object.h"
#include "text/unicode.h"

namespace zentaro {

class Variant;

/// A one-dimensional array of Variant with lower bound 0; a default Array has no elements.
class ZENTARO_API Array {
 public:
  Array();
  Array(std::initializer_list<Variant> items);
  /// Of arrays alone: one is a copy of it, several are the elements of a new one.
  Array(std::initializer_list<Array> arrays);
  explicit Array(std::vector<Variant> items);
  /// An array that was never given bounds: asking for them, or for an element, is a subscript error (9).
  static Array withoutBounds();

  bool hasBounds() const { return items_ != nullptr; }
  /// The elements; raises 9 when the array has no bounds.
  const std::vector<Variant>& items() const;
  /// The index of the last element, -1 without elements; raises 9 when the array has no bounds.
  int upperBound() const;
  /// Raises 9 for an index outside the array.
  const Variant& at(int index) const;

 private:
  // Never changed, so that copies can share it; null without bounds.
  std::shared_ptr<const std::vector<Variant>> items_;
};

template <class T, class... Others>
concept OneOf = (std::same_as<T, Others> || ...);
template <class T>
concept WholeNumber = std::integral<T> && !OneOf<T, bool, char, wchar_t, char8_t, char16_t, char32_t>;

class ZENTARO_API Variant {
 public:
  enum class Kind {
    Empty,
    Null,
    Missing,
    Boolean,
    Int16,
    Int32,
    Double,
    Currency,
    Date,
    Text,
    Array,
    Object,
    Single
  };
  struct NullValue {};
  struct MissingValue {};

  Variant() = default;
  Variant(NullValue value) : value_(value) {}
  Variant(MissingValue value) : value_(value) {}
  /// Only from a bool itself: a pointer, such as the address of a text, is no truth value.
  template <std::same_as<bool> T>
  Variant(T value) : value_(value) {}
  Variant(double value) : value_(value) {}
  Variant(float value) : value_(value) {}
  /// A whole number: Int16 up to 16 bits wide, else Int32, else (outside 32 bits) Double.
  template <WholeNumber T>
  Variant(T value) : value_(wholeNumber(value)) {}
  Variant(zentaro::Currency value) : value_(value) {}
  Variant(zentaro::Date value) : value_(value) {}
  Variant(const char* utf8) : value_(utf16(utf8)) {}
  Variant(const char8_t* utf8) : Variant(std::u8string(utf8)) {}
  Variant(const std::u8string& utf8) : Variant(std::string(utf8.begin(), utf8.end())) {}
  Variant(const std::string& utf8) : value_(utf16(utf8)) {}
  Variant(const char16_t* text) : value_(std::u16string(text)) {}
  Variant(std::u16string text) : value_(std::move(text)) {}
  Variant(zentaro::Array array) : value_(std::move(array)) {}
  Variant(zentaro::Object object) : value_(std::move(object)) {}

  static Variant null() { return NullValue{}; }
  /// What stands for an optional argument that was left out.
  static Variant missing() { return MissingValue{}; }

  Kind kind() const { return static_cast<Kind>(value_.index()); }
  bool is(Kind wanted) const { return kind() == wanted; }

  // The value of a Variant that is known to be of that kind; anything else is a type mismatch (13),
  // never a conversion.
  bool boolean() const { return get<bool>(); }
  std::int16_t int16() const { return get<std::int16_t>(); }
  std::int32_t int32() const { return get<std::int32_t>(); }
  double number() const { return get<double>(); }
  float single() const { return get<float>(); }
  zentaro::Currency currency() const { return get<zentaro::Currency>(); }
  zentaro::Date date() const { return get<zentaro::Date>(); }
  const std::u16string& text() const { return get<std::u16string>(); }
  const zentaro::Array& array() const { return get<zentaro::Array>(); }
  const zentaro::Object& object() const { return get<zentaro::Object>(); }

 private:
  using Value =
      std::variant<std::monostate, NullValue, MissingValue, bool, std::int16_t, std::int32_t, double,
                   zentaro::Currency, zentaro::Date, std::u16string, zentaro::Array, zentaro::Object, float>;

  template <class T>
  static Value wholeNumber(T value) {
    if constexpr (sizeof(T) < 2 || std::same_as<T, short>) {
      return static_cast<std::int16_t>(value);
    } else {
      return std::in_range<std::int32_t>(value) ? Value(static_cast<std::int32_t>(value))
                                                : Value(static_cast<double>(value));
    }
  }
  template <class T>
  const T& get() const {
    if (const T* value = std::get_if<T>(&value_)) return *value;
    raiseTypeMismatch();
  }
  [[noreturn]] static void raiseTypeMismatch();

  Value value_;
};

}  // namespace zentaro
