// Objects by number.
#include "tools/host/object_table.h"

namespace zentaro::tools {

int ObjectTable::idOf(const Object& object) {
  for (const auto& [id, known] : objects_) {
    if (known == object) return id;
  }
  objects_.emplace(++lastId_, object);
  return lastId_;
}

const Object* ObjectTable::find(int id) const {
  const auto found = objects_.find(id);
  return found == objects_.end() ? nullptr : &found->second;
}

}  // namespace zentaro::tools
