// Lines that fit the screen on which they are read.
#pragma once

#include <memory>
#include <ostream>
#include <streambuf>
#include <string>

#include "base/terminal/console.h"

namespace zentaro::terminal {

/// Hands on what is written, its lines broken at blanks where they are wider than the columns. What follows
/// of an indented line is indented further. Lines that are copied or that programs read stay whole:
/// commands ("zentaro ...") and JSON.
class Paragraphs : public std::streambuf {
 public:
  Paragraphs(std::streambuf& under, std::size_t columns) : under_(under), columns_(columns) {}
  ~Paragraphs() override { putWord(); }

 protected:
  int_type overflow(int_type next) override;
  int sync() override;

 private:
  void endLine();
  void beginWith(std::size_t lead);
  void putWord();
  void put(const std::string& text);

  std::streambuf& under_;
  std::size_t columns_, column_ = 0, indent_ = 0;
  std::string blanks_, word_;
  bool hasFailed_ = false;                        // what is below took not all
  bool isFirst_ = true, isBehindAdvice_ = false;  // where in the line the word stands
  bool isWhole_ = false, isInJson_ = false;       // the line is never broken, and all up to the last brace
};

/// While it lives, what goes to standard output and standard error is broken at the width of the screen,
/// where a terminal shows it.
class FittedOutput {
 public:
  FittedOutput();
  ~FittedOutput();
  FittedOutput(const FittedOutput&) = delete;
  FittedOutput& operator=(const FittedOutput&) = delete;

 private:
  struct Fitted {
    std::ostream& stream;
    std::streambuf* before;
    std::unique_ptr<Paragraphs> lines;
  };
  static Fitted fit(std::ostream& stream, Stream which);
  static void restore(Fitted& fitted);

  Fitted output_, errors_;
};

}  // namespace zentaro::terminal
