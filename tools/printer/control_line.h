// The way to the control lines of a virtual printer that runs.
#pragma once

#include <string>

#include "base/http/socket.h"

namespace zentaro::tools {

struct ControlLine {
  http::SocketHandle socket;  // the caller's to close
  std::string greeting;       // what is said first
};

/// By what the printer's --control made at the path. Raises std::runtime_error that names the path.
ControlLine connectToControl(const std::string& path);

}  // namespace zentaro::tools
