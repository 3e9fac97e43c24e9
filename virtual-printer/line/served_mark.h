// How one printer knows the device of another living printer: a record lock on the slave side, held as long
// as the printer lives. Numbers of pseudo-terminals are given again, so the name alone says nothing. Hosts
// lock the device with flock, which is another kind of lock and does not meet this one.
#pragma once

#include <filesystem>

namespace printer {

void markServed(int slave);
bool isServed(const std::filesystem::path& device);

}  // namespace printer
