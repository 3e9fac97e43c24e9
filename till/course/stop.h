// Whether somebody wants to stop what is under way.
#pragma once

#include <functional>
#include <string>

namespace zentaro::till {

/// Whether to go on is asked between two steps; no further step is sent then, and the document is cancelled or,
/// when it is partially closed, finished.
struct Stop {
  std::function<bool()> isWanted = {};
  std::string cause = {};  // for people; "interrupted" when it is empty
};

}  // namespace zentaro::till
