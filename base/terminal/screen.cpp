// Breaking while it is written: a word is held back until it is known where it stands.
#include "base/terminal/screen.h"

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

constexpr std::string_view command = "zentaro";  // what is copied begins with it

}  // namespace

Paragraphs::int_type Paragraphs::overflow(int_type next) {
  if (traits_type::eq_int_type(next, traits_type::eof())) return traits_type::not_eof(next);
  const char character = traits_type::to_char_type(next);
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

void Paragraphs::endLine() {
  put(blanks_ + '\n');
  blanks_.clear();
  column_ = 0;
  isFirst_ = true;
  isBehindAdvice_ = false;
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

void Paragraphs::beginWith(std::size_t lead) {
  constexpr std::size_t further = 4;
  indent_ = lead == 0 ? 0 : std::min(lead + further, columns_ / 2);
  if (lead == 0 && (word_ == "{" || word_ == "[")) isInJson_ = true;
  isWhole_ = isInJson_ || word_ == command || (lead == 0 && word_.front() == '{');
  if (lead == 0 && (word_ == "}" || word_ == "]")) isInJson_ = false;
}

void Paragraphs::putWord() {
  if (word_.empty()) return;
  if (isFirst_) beginWith(column_ + blanks_.size());
  if (isBehindAdvice_) isWhole_ = word_ == command;
  isBehindAdvice_ = isFirst_ && word_ == "->";
  isFirst_ = false;
  const std::size_t width = visibleColumns(word_);
  if (!isWhole_ && column_ > indent_ && column_ + blanks_.size() + width > columns_) {
    put('\n' + std::string(indent_, ' '));
    column_ = indent_;
  } else {
    put(blanks_);
    column_ += blanks_.size();
  }
  put(word_);
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
  if (!isTerminal(which)) return fitted;
  fitted.lines = std::make_unique<Paragraphs>(*fitted.before, screenColumns());
  stream.rdbuf(fitted.lines.get());
  return fitted;
}

// A command that serves a program may have given the stream another buffer since.
void FittedOutput::restore(Fitted& fitted) {
  if (fitted.lines && fitted.stream.rdbuf() == fitted.lines.get()) fitted.stream.rdbuf(fitted.before);
}

}  // namespace zentaro::terminal
