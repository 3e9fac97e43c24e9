// The library's classes as automation classes.
#include "com/instance.h"
#include "com/slots.h"
#include "interface/czentaro_members.h"
#include "interface/record_members.h"

namespace zentaro::com {
namespace {

template <class T, const auto& members>
HostClass hostClass() {
  const ClassDescription& description = describe<T>();
  return {&description, &identifiersOf(description.name), interfaceTable<members>()};
}

}  // namespace

const HostClass& hostClassOf(const ClassDescription& description) {
  static const HostClass classes[] = {hostClass<CZentaro, table::czentaroMembers>(),
                                      hostClass<statusN, table::statusNMembers>(),
                                      hostClass<statusHASAR, table::statusHASARMembers>(),
                                      hostClass<ResultadoCierre, table::closingMembers>()};
  const HostClass* found = classes;
  while (found->description != &description) ++found;
  return *found;
}

}  // namespace zentaro::com
