// Paper to the screen and to files.
#include "shell/paper_watchers.h"

#include <cstdio>
#include <stdexcept>
#include <utility>

#include "paper/svg.h"
#include "paper/text.h"
#include "shell/replace_file.h"

namespace printer {

void RollOnScreen::printed(const Sheet& sheet, const Line& line) {
  const char* indent = sheet.kind == SheetKind::roll ? "" : "      | ";
  std::printf("%s%s\n", indent, textLine(line).c_str());
  std::fflush(stdout);
}

PaperFile::PaperFile(std::string path) : path_{std::move(path)}, render_{nullptr} {
  if (path_.ends_with(".txt")) render_ = textPaper;
  if (path_.ends_with(".svg")) render_ = svgPaper;
  if (path_.ends_with(".html")) render_ = htmlPaper;
  if (render_ == nullptr)
    throw std::runtime_error{"--paper " + path_ + ": the name must end in .txt, .svg or .html"};
  replaceFile(path_, render_({}));
}

void PaperFile::finished(const std::deque<Sheet>& sheets) {
  try {
    replaceFile(path_, render_(sheets));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zentaro-printer: --paper: %s\n", error.what());
  }
}

}  // namespace printer
