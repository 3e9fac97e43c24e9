// The serial devices that this process has open, by handle.
#pragma once

#include <map>
#include <mutex>
#include <utility>

#include "platform/serial_services.h"

namespace zentaro {

/// A handle is never given out twice, so one that was closed can never reach another device. A handle is used
/// by the thread that opened it; only the table itself is shared.
template <class Device>
class HandleTable {
 public:
  SerialHandle add(Device device) {
    const std::lock_guard lock(mutex_);
    devices_.emplace(++last_, std::move(device));
    return last_;
  }
  /// Null for a handle that is not open.
  Device* find(SerialHandle handle) {
    const std::lock_guard lock(mutex_);
    const auto found = devices_.find(handle);
    return found == devices_.end() ? nullptr : &found->second;
  }
  /// False for a handle that is not open.
  bool remove(SerialHandle handle) {
    const std::lock_guard lock(mutex_);
    return devices_.erase(handle) == 1;
  }

 private:
  std::mutex mutex_;
  std::map<SerialHandle, Device> devices_;
  SerialHandle last_ = 0;
};

}  // namespace zentaro
