// Jobs and printers as clients see them. Amounts are texts, what is not known is null.
#pragma once

#include "base/files/json.h"
#include "service/workers/printer_report.h"
#include "till/books/job.h"

namespace zentaro::service {

Json jobJson(const till::Job& job, bool isVirtual);

/// What waits for a printer.
struct Queue {
  std::size_t length = 0;
  std::int64_t oldestSeconds = 0;
  std::vector<std::string> unknown;  // ids of its jobs that nobody knows about
};
Json printerJson(const PrinterReport& report, const Queue& queue);

/// "2024-03-15T14:05:09Z"; null for none.
Json timeJson(std::int64_t seconds);

}  // namespace zentaro::service
