// The name of a line over TCP, "tcp://host:port": a serial device server, or the virtual printer.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "zentaro_api.h"

namespace zentaro {

struct TcpName {
  std::string host, port;  // the host without brackets, the port as a decimal number
};

/// Whether the device is meant to be a line over TCP, well written or not.
ZENTARO_API bool isTcpName(std::string_view device);
/// Nothing when host or port is missing, or the port is no number from 1 to 65535.
ZENTARO_API std::optional<TcpName> parseTcpName(std::string_view device);

}  // namespace zentaro
