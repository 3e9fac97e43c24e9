// The offsets of the slots in a type library file.
#pragma once

#include <string>

namespace zentaro::com {

/// Gives the interfaces in the contents of a type library file the offsets that hosts of 32 bits expect. A
/// 64-bit Wine lays them out behind an IDispatch of its own width, seven pointers of eight bytes; a file that
/// is right already stays as it is.
void correctSlotOffsets(std::string& library);

}  // namespace zentaro::com
