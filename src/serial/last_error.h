// Writing the driver's last-error record. Each function returns the code that it wrote.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "serial/driver_state.h"

namespace zentaro::modCOMM {

std::int32_t keepError(std::int32_t code, std::u16string_view function, std::u16string message);

/// A failed system call, with the system's own text for its code.
std::int32_t CommRecordError(std::uint32_t code, std::u16string_view function);

/// A failed transfer: the line-error flags of the port, read and cleared here, stand behind the
/// system's text.
std::int32_t CommRecordLineError(std::uint32_t code, std::u16string_view function, const PortEntry& entry);

}  // namespace zentaro::modCOMM
