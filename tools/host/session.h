// The line protocol of `zentaro host`, without its input and output: one JSON-RPC request in, one response
// out.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "common/json.h"
#include "host/object_table.h"

namespace zentaro::tools {

/// In bytes; what is longer, or nested deeper than 128 levels, is answered with an error.
inline constexpr std::size_t longestLine = std::size_t{16} << 20;

class HostSession {
 public:
  /// The response to one line, without the line end. Raises nothing: whatever goes wrong is the response.
  std::string answer(std::string_view line);

  // The methods, each with its parameters; they raise RpcError and AutomationError.
  Json create(const Json& params);
  Json release(const Json& params);
  Json get(const Json& params);
  Json put(const Json& params);
  Json call(const Json& params);
  Json describe(const Json& params);

 private:
  const Object& object(const Json& params) const;

  ObjectTable objects_;
};

}  // namespace zentaro::tools
