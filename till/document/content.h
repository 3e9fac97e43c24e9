// What makes two sales the same sale.
#pragma once

#include <string>

#include "till/document/sale.h"

namespace zentaro::till {

/// A short text that is the same for sales with the same content, however their files were written: its rule's
/// number and a sum, "2:0123456789abcdef".
std::string contentDigest(const Sale& sale);

/// By the rule of old journals, "1:...", in which two contents could be taken for one.
std::string oldContentDigest(const Sale& sale);

}  // namespace zentaro::till
