// Adding to records that copies share.
#include "virtual-printer/fiscal/z_memory.h"

#include <algorithm>

namespace printer {

// A record behind this copy's last one was added by another copy, which keeps it.
const ZRecord& ZMemory::add(const ZRecord& record) {
  if (records_->size() > count_)
    records_ = std::make_shared<std::vector<ZRecord>>(records().begin(), records().end());
  records_->push_back(record);
  return (*records_)[count_++];
}

bool ZMemory::operator==(const ZMemory& other) const {
  if (count_ != other.count_) return false;
  return records_ == other.records_ || std::ranges::equal(records(), other.records());
}

}  // namespace printer
