// The method `sale` of the line protocol: a document on the open port of an object.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "common/json.h"
#include "printer/czentaro.h"

namespace zentaro::tools {

/// Prints the document as `zentaro sale` does, under the same journal, and gives its verdict; the port may be
/// closed and opened again meanwhile. `progress` is told each line for the cashier. Raises RpcError
/// InvalidParameters for a document that is not in order and a closed port, std::runtime_error when the
/// journal cannot be written: nothing was sent then.
Json sellOn(CZentaro& printer, const Json& document, const std::string& key,
            const std::function<void(std::string_view)>& progress);

}  // namespace zentaro::tools
