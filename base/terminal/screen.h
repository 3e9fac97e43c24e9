// Lines that fit the screen on which they are read.
#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <streambuf>
#include <string>

#include "base/terminal/console.h"

namespace zentaro::terminal {

/// Hands on what is written, its lines broken at blanks where they are wider than the columns, but for what is
/// whole. What follows of an indented line is indented further. Without columns nothing is broken.
class Paragraphs : public std::streambuf {
 public:
  Paragraphs(std::streambuf& under, std::optional<std::size_t> columns) : under_(under), columns_(columns) {}
  ~Paragraphs() override { putWord(); }

 protected:
  int_type overflow(int_type next) override;
  std::streamsize xsputn(const char* text, std::streamsize size) override;
  int sync() override;

 private:
  void endLine();
  bool isToBreakBefore(std::size_t width) const;
  void putWord();
  void put(const std::string& text);

  std::streambuf& under_;
  std::optional<std::size_t> columns_;
  std::size_t column_ = 0, indent_ = 0;
  std::string blanks_, word_;
  bool hasFailed_ = false;  // what is below took not all
  bool isFirst_ = true;     // in its line
};

/// While it lives, standard output and standard error are paragraphs: of the width of the screen where a terminal
/// shows them.
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
