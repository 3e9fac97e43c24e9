// Breaking while it is written: a word is held back until it is known where it stands.
#include "base/terminal/screen.h"

#include <algorithm>
#include <iostream>

#include "base/terminal/layout.h"

namespace zentaro::terminal {

namespace {

// Without the sequences that change the colour.
std::size_t visibleColumns(std::string_view word) {
  std::size_t columns = columnsOf(word);
  for (std::size_t at = word.find('\x1B'); at != std::string_view::npos; at = word.find('\x1B', at + 1)) {
    const std::size_t end = word.find('m', at);
    if (end != std::string_view::npos) columns -= end - at + 1;
  }
  return columns;
}

}  // namespace

Paragraphs::int_type Paragraphs::overflow(int_type next) {
  if (traits_type::eq_int_type(next, traits_type::eof())) return traits_type::not_eof(next);
  const char character = traits_type::to_char_type(next);
  if (!columns_) return under_.sputc(character == wholeBlank ? ' ' : character);
  if (character != ' ' && character != '\n') {
    word_ += character;
    return next;
  }
  putWord();
  if (character == ' ')
    blanks_ += ' ';
  else
    endLine();
  return hasFailed_ ? traits_type::eof() : next;
}

// In one piece, since threads write to the same stream.
std::streamsize Paragraphs::xsputn(const char* text, std::streamsize size) {
  if (columns_) return std::streambuf::xsputn(text, size);
  const std::string all = plain({text, static_cast<std::size_t>(size)});
  return under_.sputn(all.data(), size);
}

void Paragraphs::endLine() {
  put(blanks_ + '\n');
  blanks_.clear();
  column_ = 0;
  isFirst_ = true;
}

// A word is held back, blanks are not: somebody may be asked to type behind them.
int Paragraphs::sync() {
  if (word_.empty()) {
    put(blanks_);
    column_ += blanks_.size();
    blanks_.clear();
  }
  return hasFailed_ ? -1 : under_.pubsync();
}

// What is whole and wider than any line gains nothing from a line of its own.
bool Paragraphs::isToBreakBefore(std::size_t width) const {
  const bool isWhole = word_.find(wholeBlank) != std::string::npos;
  return column_ > indent_ && column_ + blanks_.size() + width > *columns_ &&
         !(isWhole && indent_ + width > *columns_);
}

void Paragraphs::putWord() {
  if (word_.empty()) return;
  if (isFirst_) {
    constexpr std::size_t further = 4;
    const std::size_t lead = column_ + blanks_.size();
    indent_ = lead == 0 ? 0 : std::min(lead + further, *columns_ / 2);
  }
  isFirst_ = false;
  const std::size_t width = visibleColumns(word_);
  if (isToBreakBefore(width)) {
    put('\n' + std::string(indent_, ' '));
    column_ = indent_;
  } else {
    put(blanks_);
    column_ += blanks_.size();
  }
  put(plain(word_));
  column_ += width;
  blanks_.clear();
  word_.clear();
}

void Paragraphs::put(const std::string& text) {
  const auto size = static_cast<std::streamsize>(text.size());
  hasFailed_ = under_.sputn(text.data(), size) != size || hasFailed_;
}

FittedOutput::FittedOutput()
    : output_(fit(std::cout, Stream::Output)), errors_(fit(std::cerr, Stream::Errors)) {}

FittedOutput::~FittedOutput() {
  restore(errors_);
  restore(output_);
}

FittedOutput::Fitted FittedOutput::fit(std::ostream& stream, Stream which) {
  Fitted fitted{stream, stream.rdbuf(), nullptr};
  const auto columns = isTerminal(which) ? std::optional(screenColumns()) : std::nullopt;
  fitted.lines = std::make_unique<Paragraphs>(*fitted.before, columns);
  stream.rdbuf(fitted.lines.get());
  return fitted;
}

// A command that serves a program may have given the stream another buffer since.
void FittedOutput::restore(Fitted& fitted) {
  if (fitted.stream.rdbuf() == fitted.lines.get()) fitted.stream.rdbuf(fitted.before);
}

}  // namespace zentaro::terminal
