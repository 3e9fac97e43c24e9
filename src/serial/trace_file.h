// The file of a traffic trace.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace zentaro {

/// A text file in the code page with CR LF line ends, closed when destroyed.
class TraceFile {
 public:
  /// Opens `path` for appending after closing the file that was open; raises the file error that
  /// kept it from opening, and is closed then.
  void open(std::u16string_view path);
  void close() { file_.reset(); }
  bool isOpen() const { return file_ != nullptr; }

  /// Appends the text and a line end in one write. Raises the file error of a failed write, 52 when
  /// no file is open.
  void line(std::u16string_view text);

 private:
  std::unique_ptr<AppendFile> file_;
};

}  // namespace zentaro
