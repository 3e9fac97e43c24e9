// The method `sale` of the line protocol: a document on the open port of an object.
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

/// Prints the document as `zentaro sale` does, under the same journal, and gives its verdict; the port may be
/// closed and opened again meanwhile. `progress` is told each line for the cashier. Raises RpcError
/// InvalidParameters for a document that is not in order and a closed port, std::runtime_error when the
/// journal cannot be written: nothing was sent then.
HostVerdict sellOn(CZentaro& printer, const HostSale& sale,
                   const std::function<void(std::string_view)>& progress);

}  // namespace zentaro::tools
