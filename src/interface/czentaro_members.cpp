// The table of members and the maker of an object, under the name that hosts create it by.
#include "interface/czentaro_members.h"

namespace zentaro {

template <>
const ClassDescription& describe<CZentaro>() {
  static constexpr ClassDescription description{
      "CZentaro", "_CZentaro", "A fiscal printer on a serial port.", table::czentaroMembers,
      [] { return std::shared_ptr<void>(std::make_shared<CZentaro>()); }};
  return description;
}

}  // namespace zentaro
