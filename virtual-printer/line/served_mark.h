// How one printer knows that another, living one serves a link: a record lock on the slave side of its
// device, held as long as the printer lives, at a place that belongs to the link's path. Numbers of
// pseudo-terminals are given again, so neither the device's name nor a printer on it says that this link is
// served. Hosts lock the device with flock, which is another kind of lock and does not meet this one.
#pragma once

#include <filesystem>

#include "virtual-printer/line/descriptor.h"

namespace printer {

/// The mark holds as long as the descriptor is open; a device that cannot be opened gives a closed one.
Descriptor markServed(const std::filesystem::path& device, const std::filesystem::path& link);

/// Whether the device that the link leads to carries the link's mark.
bool isServed(const std::filesystem::path& link);

}  // namespace printer
