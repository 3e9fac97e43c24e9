// A serial device that this process has open.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

#include "platform/posix/descriptor.h"
#include "platform/posix/line_status.h"
#include "platform/serial_services.h"

namespace zentaro::posix {

/// A device held exclusively: by an advisory lock against everybody who looks for one, and by the
/// terminal's own exclusive mode against everybody else. Destroying it gives the device back, but not
/// in a child of the process that opened it.
class OpenDevice {
 public:
  /// Nothing, with errno set, when the device cannot be opened; EBUSY when somebody holds it, ENOTTY
  /// when it is no serial device, EIO when there is no port behind its name.
  static std::optional<OpenDevice> open(const std::string& path);

  OpenDevice(OpenDevice&&) = default;
  OpenDevice& operator=(OpenDevice&&) = delete;
  ~OpenDevice();

  int descriptor() const { return descriptor_.number(); }
  /// Closes a device that hung up: while somebody holds it, an adapter that is plugged in again gets
  /// another name. What has not been sent is discarded.
  void giveUp();
  bool isGone() const { return !descriptor_.isOpen(); }
  /// The flags of the line errors since the last call, or since the device was opened.
  std::uint32_t takeLineErrors();

  CommTimeouts timeouts{0xFFFFFFFF, 0, 1000, 1000, 0};

 private:
  explicit OpenDevice(Descriptor descriptor);

  Descriptor descriptor_;
  pid_t opener_;
  std::optional<LineCounters> counters_;
};

}  // namespace zentaro::posix
