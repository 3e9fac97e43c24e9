// The line protocol of `zentaro host`, without its input and output: one JSON-RPC request in, one
// response out.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "base/files/json.h"
#include "printer/czentaro.h"
#include "tools/host/object_table.h"

namespace zentaro::tools {

/// In bytes; what is longer, or nested deeper than 128 levels, is answered with an error.
inline constexpr std::size_t longestLine = std::size_t{16} << 20;

class HostSession {
 public:
  /// Is given each line that comes before a response.
  using Notify = std::function<void(const std::string& line)>;
  explicit HostSession(Notify notify = [](const std::string&) {}) : notify_(std::move(notify)) {}

  /// The response to one line, without the line end. Raises nothing: whatever goes wrong is the response.
  std::string answer(std::string_view line);
  /// The response to the last line has been written, for all that can be known.
  void delivered();

  // The methods, each with its parameters; their results as JSON. They raise RpcError and AutomationError.
  std::string create(const Json& params);
  std::string release(const Json& params);
  std::string get(const Json& params);
  std::string put(const Json& params);
  std::string call(const Json& params);
  std::string sale(const Json& params);
  std::string check(const Json& params);
  std::string close(const Json& params);
  std::string settle(const Json& params);
  std::string jobs(const Json& params);
  std::string describe(const Json& params);

 private:
  const Object& object(const Json& params) const;
  CZentaro& printer(const Json& params) const;
  std::function<void(std::string_view)> progressOf(const Json& params) const;
  /// The same, of which a member is to be used: an error then names both.
  const Object& named(const Json& params);

  Notify notify_;
  ObjectTable objects_;
  std::string_view line_;                // that is being answered
  Json about_;                           // the member that it names
  std::function<void()> whenDelivered_;  // its response
};

}  // namespace zentaro::tools
