// What makes two sales the same sale.
#pragma once

#include <string>

#include "till/document/sale.h"

namespace zentaro::tools {

/// A short text that is the same for sales with the same content, however their files were written.
std::string contentDigest(const Sale& sale);

}  // namespace zentaro::tools
