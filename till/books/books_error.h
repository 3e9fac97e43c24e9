// Why the books cannot be used.
#pragma once

#include <stdexcept>
#include <string>

#include "zentaro_api.h"

namespace zentaro::till {

class ZENTARO_API BooksError : public std::runtime_error {
 public:
  enum class Cause {
    Unusable,  // not there, or not ours to write
    Full,      // no room on the disk
    Disk,      // it failed, or a limit on the size of a file was met
    Locked,    // by another program for too long
    Damaged,   // the content makes no sense
    Gone,      // removed or replaced while they were open
    Settled    // the job that was to be changed was settled by somebody else
  };

  /// `detail` is the system's own text. what() says what is wrong, where, and what to do.
  BooksError(Cause cause, const std::string& path, const std::string& detail);

  Cause cause() const { return cause_; }

 private:
  Cause cause_;
};

}  // namespace zentaro::till
