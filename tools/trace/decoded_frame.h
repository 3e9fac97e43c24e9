// A command or an answer of the line, taken apart without refusing anything.
#pragma once

#include <string>
#include <string_view>

#include "virtual-printer/wire/frame.h"

namespace zentaro::tools {

struct DecodedFrame {
  enum class Form {
    Nothing,  // no byte, or wait bytes only
    Frame,
    Reset,  // the unframed bytes 07 to 11
    Junk    // no STX, or no ETX behind it
  };
  Form form = Form::Nothing;
  virtual_printer::Command content;  // an answer's first two fields are its status words
  std::string checksum;              // the digits as they came
  bool isChecksumGood = false;
};

enum class Direction { Command, Answer };

DecodedFrame decodeFrame(std::string_view bytes, Direction direction);

/// Where the frame begins and where its ETX stands; npos when there is none.
struct FrameBounds {
  std::size_t stx = std::string_view::npos, etx = std::string_view::npos;
  bool areFound() const { return etx != std::string_view::npos; }
};
FrameBounds frameBounds(std::string_view bytes);

}  // namespace zentaro::tools
