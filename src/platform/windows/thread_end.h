// The end of this copy of the library, when its program unloads it.
#pragma once

namespace zentaro::windows {

/// Does what was to be done at the end of each thread, and has the system forget about it: its callback must
/// not point into a library that is gone.
void releaseThreadEnds();

}  // namespace zentaro::windows
