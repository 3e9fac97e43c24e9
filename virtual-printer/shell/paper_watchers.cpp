// Paper to the screen and to files.
#include "virtual-printer/shell/paper_watchers.h"

#include <cerrno>
#include <stdexcept>
#include <utility>

#include "base/files/careful_file.h"
#include "base/files/paths.h"
#include "base/system/error_text.h"
#include "base/terminal/language.h"
#include "virtual-printer/paper/svg.h"
#include "virtual-printer/paper/text.h"

namespace virtual_printer {

using zentaro::terminal::say;

void RollOnScreen::printed(const Sheet& sheet, const Line& line) {
  const char* indent = sheet.kind == SheetKind::Roll ? "" : "      | ";
  switch (outlet_.write(indent + textLine(line) + "\n")) {
    case Outlet::Fate::Written: return trouble_.pass();
    case Outlet::Fate::Waiting:
      return trouble_.meet(say("nadie lee el rollo en la salida estándar; la impresora sigue sin él",
                               "nobody reads the roll on standard output; the printer goes on without it"));
    case Outlet::Fate::Failed:
      return trouble_.meet(say("el rollo en la salida estándar no se puede escribir: {}",
                               "the roll on standard output cannot be written: {}",
                               {zentaro::system::errorText(errno)}));
  }
}

PaperFile::PaperFile(std::string path) : path_{std::move(path)}, render_{nullptr} {
  if (path_.ends_with(".txt")) render_ = textPaper;
  if (path_.ends_with(".svg")) render_ = svgPaper;
  if (path_.ends_with(".html")) render_ = htmlPaper;
  if (render_ == nullptr)
    throw std::runtime_error(say("--paper {}: el nombre debe terminar en .txt, .svg o .html",
                                 "--paper {}: the name must end in .txt, .svg or .html", {path_}));
  try {
    zentaro::base::replaceFile(zentaro::files::pathOf(path_), render_({}));
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(std::string{"--paper: "} + error.what());
  }
}

void PaperFile::finished(const std::deque<Sheet>& sheets) {
  try {
    zentaro::base::replaceFile(zentaro::files::pathOf(path_), render_(sheets));
    trouble_.pass();
  } catch (const std::runtime_error& error) {
    trouble_.meet(std::string{"--paper: "} + error.what());
  }
}

}  // namespace virtual_printer
