// Names of types and kinds of access.
#include "common/type_names.h"

#include <array>

#include "interface/library.h"

namespace zentaro::tools {

namespace {

constexpr std::array<std::string_view, 10> valueTypes{"",       "Variant",  "Boolean", "Int16", "Int32",
                                                      "Double", "Currency", "Date",    "Text",  "Array"};
static_assert(valueTypes.size() == static_cast<std::size_t>(ValueType::Object));

constexpr std::array<std::string_view, 4> accesses{"get", "let", "set", "method"};

}  // namespace

std::string typeName(const Type& type) {
  if (!type.name.empty()) return std::string(type.name);
  const auto index = static_cast<std::size_t>(type.kind);
  return std::string(index < valueTypes.size() ? valueTypes[index] : "Object");
}

std::string accessName(Access access) { return std::string(accesses[static_cast<std::size_t>(access)]); }

std::string qualifiedName(const ClassDescription& description) {
  return std::string(libraryName) + "." + std::string(description.name);
}

}  // namespace zentaro::tools
