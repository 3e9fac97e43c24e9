// Reading and writing a serial device with a time limit. Each call returns false with errno set on
// failure; a hang-up is the failure EIO. A time limit that passes is no failure.
#pragma once

#include <chrono>
#include <cstddef>
#include <string_view>

namespace zentaro::posix {

/// What has arrived, at most `count` bytes; waits up to `limit` only while nothing has. `got` is 0
/// when nothing came.
bool readSome(int descriptor, char* buffer, std::size_t count, std::chrono::milliseconds limit,
              std::size_t& got);

/// All of `bytes`, or what left within `limit`. `written` counts what left, also on failure.
bool writeAll(int descriptor, std::string_view bytes, std::chrono::milliseconds limit, std::size_t& written);

/// Sleeps until a byte can be read or the deadline is over.
bool waitForInput(int descriptor, std::chrono::steady_clock::time_point deadline);

}  // namespace zentaro::posix
