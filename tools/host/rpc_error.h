// What the line protocol itself rejects; errors of the library are AutomationErrors.
#pragma once

#include <stdexcept>
#include <string>

namespace zentaro::tools {

enum class RpcCode : int {
  ParseError = -32700,
  InvalidRequest = -32600,
  UnknownMethod = -32601,
  InvalidParameters = -32602,
  InternalError = -32603,
};

class RpcError : public std::runtime_error {
 public:
  RpcError(RpcCode code, const std::string& message) : std::runtime_error(message), code_(code) {}
  RpcCode code() const { return code_; }

 private:
  RpcCode code_;
};

inline RpcError invalidParameters(const std::string& message) {
  return {RpcCode::InvalidParameters, message};
}

}  // namespace zentaro::tools
