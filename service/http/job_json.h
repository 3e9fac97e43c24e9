// Jobs and printers as clients see them. Amounts are texts, what is not known is null.
#pragma once

#include "base/files/json.h"
#include "service/workers/printer_report.h"
#include "till/books/books.h"

namespace zentaro::service {

Json jobJson(const till::Job& job, bool isVirtual);

/// With what waits for it, and what nobody knows about.
Json printerJson(const PrinterReport& report, const till::Books& books);

}  // namespace zentaro::service
