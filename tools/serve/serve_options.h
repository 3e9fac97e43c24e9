// The options of the service, from the command line and from a file.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/system/address.h"
#include "service/service.h"

namespace zentaro::tools {

struct ServeOptions {
  std::vector<std::string> printers;  // NAME=DEVICE
  bool isVirtual = false;
  std::string listen = "127.0.0.1:8211";
  std::vector<std::string> origins, hosts;
  std::string centre, tills, till;          // the broker of a chain, by which end this is; the name of a till
  std::string authority, certificate, key;  // files, for TLS
  int spread = service::Broker{}.spread;    // seconds
  std::string tokens;                       // the file; empty: the usual one
};

/// Nothing for "none". Raises std::runtime_error for what is no address.
std::optional<system::Address> listenAddress(const ServeOptions& options);

/// Those that were named, else those of the settings. Raises std::runtime_error when there are none, two have one
/// name, or a name is no word.
std::vector<service::NamedPrinter> namedPrinters(const ServeOptions& options);

/// Nothing without a chain. Raises std::runtime_error for options that do not fit, and a key that others may read.
std::optional<service::ChainSettings> chainSettings(const ServeOptions& options);

std::string tokensPathOf(const ServeOptions& options);

}  // namespace zentaro::tools
