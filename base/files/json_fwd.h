// JSON by name only, for headers.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace zentaro {

using Json = nlohmann::ordered_json;

}  // namespace zentaro
