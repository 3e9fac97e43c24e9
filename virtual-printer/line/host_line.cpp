// Looking through what was polled.
#include "virtual-printer/line/host_line.h"

#include <algorithm>

namespace printer {

bool sawSomething(const std::vector<pollfd>& polled, int descriptor) {
  return std::any_of(polled.begin(), polled.end(),
                     [&](const pollfd& entry) { return entry.fd == descriptor && entry.revents != 0; });
}

}  // namespace printer
