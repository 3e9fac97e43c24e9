// A host can create statusHASAR alone; the other records are handed out by the printer object.
#include "interface/record_members.h"

namespace zentaro {

template <>
const ClassDescription& describe<statusN>() {
  static constexpr ClassDescription description{"statusN", "_statusN", "The normal status of the printer.",
                                                table::statusNMembers, nullptr};
  return description;
}

template <>
const ClassDescription& describe<statusHASAR>() {
  static constexpr ClassDescription description{
      "statusHASAR", "_statusHASAR", "Status words and document counters of the printer.",
      table::statusHASARMembers, [] { return std::shared_ptr<void>(std::make_shared<statusHASAR>()); }};
  return description;
}

template <>
const ClassDescription& describe<ResultadoCierre>() {
  static constexpr ClassDescription description{"ResultadoCierre", "_ResultadoCierre",
                                                "The figures of a fiscal closing.", table::closingMembers,
                                                nullptr};
  return description;
}

}  // namespace zentaro
