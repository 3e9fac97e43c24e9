// A stream of the program that people look at, written by a thread of its own: a reader who stops reading stops
// neither the printer nor its end.
#pragma once

#include <memory>
#include <string>

namespace virtual_printer {

class Outlet {
 public:
  enum class Fate { Written, Waiting, Failed };

  explicit Outlet(int descriptor);
  Outlet(const Outlet&) = delete;
  Outlet& operator=(const Outlet&) = delete;
  /// Gives the reader a last moment; what he has not taken by then is lost.
  ~Outlet();

  /// Waits a moment for the reader, and from then on no more until he has caught up. What he has not taken is kept
  /// up to a megabyte, and what comes beyond it is dropped. After Failed errno says why.
  Fate write(std::string text);

 private:
  struct Channel;
  std::shared_ptr<Channel> channel_;  // shared with the thread, which may be held up for ever
};

}  // namespace virtual_printer
