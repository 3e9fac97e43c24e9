// JSON as the commands read and write it: members keep their order, and every text is valid UTF-8 on output.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "base/files/json_fwd.h"

namespace zentaro {

/// One line, without the line end.
inline std::string jsonLine(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// Indented for people.
inline std::string jsonPage(const Json& json) {
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

/// What is not known, as JSON.
inline Json orNull(const std::string& text) { return text.empty() ? Json(nullptr) : Json(text); }
template <class T>
Json orNull(const std::optional<T>& value) {
  return value ? Json(*value) : Json(nullptr);
}

}  // namespace zentaro
