// Control lines on standard input, answered on standard error.
#pragma once

#include <memory>

#include "virtual-printer/line/inbox.h"
#include "virtual-printer/shell/control.h"

namespace virtual_printer {

/// Reads until the end of standard input, on a thread of its own; the loop that works off the inbox answers.
void readStandardInput(const std::shared_ptr<Inbox>& inbox, ReplyTo reply);

}  // namespace virtual_printer
