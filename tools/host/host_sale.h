// The methods of the line protocol that stand on the calls of a till.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/files/json.h"
#include "printer/czentaro.h"
#include "till/document/node.h"

namespace zentaro::tools {

struct HostSale {
  const till::Node& document;
  std::string key;     // under it nothing is printed twice; empty: none
  bool again = false;  // the same content for a new customer
};

struct HostVerdict {
  Json json;
  std::function<void()> delivered = [] {};  // to be called when the caller has the verdict
};

using TellProgress = std::function<void(std::string_view line)>;

/// Prints the document as `zentaro sale` does, with the same books, and gives its verdict; the port may be closed and
/// opened again meanwhile. `progress` is told each line for the cashier. Raises RpcError InvalidParameters, here and
/// below, for what is not in order and for a closed port: nothing was sent then.
HostVerdict sellOn(CZentaro& printer, const HostSale& sale, const TellProgress& progress);

struct HostClosing {
  std::string closing;         // "X" or "Z"
  std::string key;             // under it no second Z is made; empty: none
  bool evenIfUnknown = false;  // a Z although it is unknown what became of a sale
};

/// The verdict of a closing, with its figures as the member "figures".
Json closeOn(CZentaro& printer, const HostClosing& closing, const TellProgress& progress);

/// What became of what was cut short on the printer.
Json settleOn(CZentaro& printer, const TellProgress& progress);

}  // namespace zentaro::tools
