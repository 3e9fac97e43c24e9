// Starting a virtual printer.
#include "tools/connection/virtual_printer.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "base/files/paths.h"
#include "base/terminal/language.h"

namespace zentaro::tools {

namespace {

constexpr int longestStart = 10000;  // milliseconds; a busy machine may take a while

std::vector<std::string> wordsWith(const std::vector<std::string>& options) {
  std::vector<std::string> words{base::companionProgram("zentaro-printer"), "--quiet", "--temporary",
                                 "--lang"};
  words.emplace_back(terminal::say("es", "en"));
  words.insert(words.end(), options.begin(), options.end());
  return words;
}

}  // namespace

VirtualPrinter::VirtualPrinter(const std::vector<std::string>& options) : process_(wordsWith(options)) {
  waitUntilReady();
  process_.ignoreErrors();
}

void VirtualPrinter::waitUntilReady() {
  constexpr std::string_view ready = "ready: ", page = "page: ", paper = "paper: ",
                             program = "zentaro-printer: ";
  std::string said, line;
  while (process_.readErrorLine(line, longestStart)) {
    if (line.starts_with(ready)) {
      device_ = line.substr(ready.size());
      return;
    }
    if (line.starts_with(page))
      page_ = line.substr(page.size());
    else if (line.starts_with(paper))
      paper_ = line.substr(paper.size());
    else
      said += line + "\n";
  }
  // It did start, and has said what is wrong with its options.
  if (said.starts_with(program))
    throw std::runtime_error(said.substr(program.size(), said.size() - program.size() - 1));
  throw std::runtime_error(terminal::say(
      "la impresora virtual no arrancó; dijo: {}\n¿Está zentaro-printer junto a zentaro, o en PATH?",
      "the virtual printer did not start; it said: {}\n"
      "Is zentaro-printer installed beside zentaro, or in PATH?",
      {said + line}));
}

std::string VirtualPrinter::paper() const {
  std::ostringstream text;
  text << std::ifstream(files::pathOf(paper_)).rdbuf();
  return text.str();
}

}  // namespace zentaro::tools
