// The service as a whole: books, printers, HTTP. It is ready when it is made, and ends what it
// prints before it is gone.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/system/address.h"
#include "service/chain/mqtt_link.h"
#include "service/http/chronicle.h"

namespace zentaro::service {

/// Where the books say, in JSON, at which address and with which printers it runs.
inline constexpr const char* serviceNote = "service";

struct NamedPrinter {
  std::string name, device;
  bool isVirtual = false;
};

/// The way to the other end of a chain.
struct ChainSettings {
  Broker broker;
  std::string till;  // the name of this one; empty: this is the centre
};

struct ServiceSettings {
  std::vector<NamedPrinter> printers;
  std::optional<system::Address> listen;  // nothing: no HTTP
  std::vector<std::string> origins;       // of pages that may ask from elsewhere
  std::vector<std::string> hosts;         // further names that Host may have
  std::optional<ChainSettings> chain;
  std::string books, tokens;  // paths
  std::string ownToken;       // with all rights, of this run alone; empty for none
};

class Service {
 public:
  /// Raises std::runtime_error when it cannot begin: the books, another service on them, the address.
  Service(ServiceSettings settings, const Chronicle::Say& say);
  ~Service();

  /// "http://127.0.0.1:8211"; empty without HTTP.
  std::string url() const;

 private:
  struct Inside;
  std::unique_ptr<Inside> inside_;
};

}  // namespace zentaro::service
