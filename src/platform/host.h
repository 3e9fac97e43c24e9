// The host application: what the library asks of it while an operation runs. A host installs
// callbacks for its thread.
#pragma once

#include <functional>
#include <string>

#include "zentaro_api.h"

namespace zentaro {

class Host {
 public:
  virtual ~Host() = default;
  /// Lets the host process its pending events once. What the host's code throws passes through.
  virtual void yield() = 0;
  /// True when somebody wants the yields, so that a wait must not sleep long.
  virtual bool wantsYields() const = 0;
  /// A modal box with an error icon and an OK button.
  virtual void errorBox(std::u16string_view title, std::u16string_view text) = 0;
};

/// Installs the calling thread's yield callback: it is called at least 100 times a second while an
/// operation waits. An empty function removes it. What it throws ends the operation and reaches its
/// caller; the printer object stays usable, but its outcome, 0 since the wait began, says nothing.
ZENTARO_API void setYieldCallback(std::function<void()> callback);

/// Installs the calling thread's message box (title, text). Without one, a box is one line on standard error.
ZENTARO_API void setMessageBoxCallback(
    std::function<void(std::u16string_view, std::u16string_view)> callback);

}  // namespace zentaro
