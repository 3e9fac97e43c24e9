// Collects the chunks of an answer until its checksum is there. Whether the answer is valid is
// another question (answer.h).
#pragma once

#include <cstddef>
#include <string>

namespace zentaro {

class Receiver {
 public:
  /// Takes a chunk. The wait bytes in front of the first useful byte are skipped.
  void feed(std::u16string chunk);

  /// True once a byte that is no wait byte has come.
  bool started() const { return !text_.empty(); }
  /// True once there is an ETX. Behind an STX only an ETX of its own counts: what came before it is junk.
  bool hasEtx() const { return etx_ != std::u16string::npos; }
  /// True once at least the four checksum characters follow that ETX.
  bool complete() const { return hasEtx() && text_.size() - etx_ > 4; }

  const std::u16string& text() const { return text_; }

 private:
  std::u16string text_;
  std::size_t stx_ = std::u16string::npos, etx_ = std::u16string::npos;
};

}  // namespace zentaro
