// The words that signatures, JSON and generated bindings use for types and kinds of access.
#include "interface/type_names.h"

#include "interface/library.h"

namespace zentaro {

std::string typeName(const Type& type) {
  switch (type.kind) {
    case ValueType::None: return "";
    case ValueType::Variant: return "Variant";
    case ValueType::Boolean: return "Boolean";
    case ValueType::Int16: return "Int16";
    case ValueType::Int32: return "Int32";
    case ValueType::Double: return "Double";
    case ValueType::Currency: return "Currency";
    case ValueType::Date: return "Date";
    case ValueType::Text: return "Text";
    case ValueType::Array: return "Array";
    case ValueType::Object:
    case ValueType::Enumeration: break;
  }
  return type.name.empty() ? "Object" : std::string(type.name);
}

std::string accessName(Access access) {
  switch (access) {
    case Access::Get: return "get";
    case Access::Let: return "let";
    case Access::Set: return "set";
    case Access::Call: break;
  }
  return "method";
}

std::string qualifiedName(const ClassDescription& description) {
  return std::string(libraryName) + "." + std::string(description.name);
}

}  // namespace zentaro
