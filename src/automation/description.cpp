// The values of parameters that were left out.
#include "automation/description.h"

namespace zentaro {

Variant Default::value() const {
  switch (kind) {
    case Kind::None: break;
    case Kind::Missing: return Variant::missing();
    case Kind::Zero: return std::int16_t{0};
    case Kind::EmptyText: return u"";
    case Kind::Text: return std::string(text);
    case Kind::True: return true;
  }
  return {};
}

std::vector<int> Member::outcomeCodes() const {
  std::vector<int> codes;
  if ((outcomes & checksPort) != 0 && returnsOutcome()) codes.push_back(-1);
  if ((outcomes & exchanges) != 0) codes.insert(codes.end(), {0, 1, 2, 3, 4, 5});
  if ((outcomes & checksArgument) != 0) codes.push_back(6);
  return codes;
}

}  // namespace zentaro
