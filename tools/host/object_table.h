// The objects that a caller of the line protocol holds, by number.
#pragma once

#include <map>

#include "automation/object.h"

namespace zentaro::tools {

class ObjectTable {
 public:
  /// The object's number; an object that is new gets the next one, counted from 1 and never used again.
  int idOf(const Object& object);
  /// Null for a number that is not in use.
  const Object* find(int id) const;
  /// False for a number that is not in use.
  bool release(int id) { return objects_.erase(id) > 0; }

 private:
  std::map<int, Object> objects_;
  int lastId_ = 0;
};

}  // namespace zentaro::tools
