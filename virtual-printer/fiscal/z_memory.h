// The Z records of the fiscal memory. Records are only ever added, so copies share them: the books are copied
// and compared with every command, however many years the memory holds.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "virtual-printer/fiscal/day.h"

namespace printer {

struct ZRecord {
  int number = 0;
  LocalTime closedAt{};
  DayTotals totals{};
  LastInvoice lastInvoice{};
  bool operator==(const ZRecord&) const = default;
};

class ZMemory {
 public:
  const ZRecord& add(const ZRecord& record);

  std::span<const ZRecord> records() const { return {records_->data(), count_}; }
  std::size_t size() const { return count_; }

  bool operator==(const ZMemory& other) const;

 private:
  std::shared_ptr<std::vector<ZRecord>> records_ = std::make_shared<std::vector<ZRecord>>();
  std::size_t count_ = 0;  // of this copy; another one may have added more
};

}  // namespace printer
