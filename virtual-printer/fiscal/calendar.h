// Local dates and times as texts.
#pragma once

#include <chrono>
#include <ctime>
#include <optional>
#include <string>

namespace virtual_printer {

using LocalTime = std::chrono::local_seconds;

/// The pattern is one of strftime.
std::string written(LocalTime time, const char* pattern);

// A time written with "%Y-%m-%dT%H:%M:%S"; nothing for any other text.
inline constexpr const char* stampPattern = "%Y-%m-%dT%H:%M:%S";
std::optional<LocalTime> fromStamp(const std::string& text);

/// The date must be one that exists.
LocalTime fromFields(const std::tm& fields);

}  // namespace virtual_printer
