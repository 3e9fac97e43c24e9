// Each line is one write, so that two traces in one file never mix within a line.
#include "serial/trace_file.h"

#include "automation/automation_error.h"
#include "platform/services.h"
#include "text/unicode.h"

namespace zentaro {

void TraceFile::open(std::u16string_view path) {
  close();
  std::error_code error;
  file_ = services().files->openForAppend(utf8(path), error);
  if (!isOpen()) throw fileError(error);
}

void TraceFile::line(std::u16string_view text) {
  if (!isOpen()) throw AutomationError(ErrorNumber::BadFileNumber);
  if (const std::error_code error = file_->write(services().codePage->bytes(text) + "\r\n"))
    throw fileError(error);
}

}  // namespace zentaro
