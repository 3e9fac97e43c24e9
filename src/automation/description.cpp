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

}  // namespace zentaro
