// Starting a virtual printer.
#include "common/virtual_printer.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "common/interruption.h"
#include "terminal/language.h"

namespace zentaro::tools {

namespace {

constexpr int longestStart = 10000;  // milliseconds; a busy machine may take a while

}  // namespace

VirtualPrinter::VirtualPrinter(const std::vector<std::string>& options) : process_(words(options)) {
  waitUntilReady();
  process_.discardErrors();
  Interruption::setLeftovers(process_.id(), folder_.path().string());
}

std::vector<std::string> VirtualPrinter::words(const std::vector<std::string>& options) const {
  std::vector<std::string> words{
      companionProgram("zentaro-printer"), "--quiet", "--link", device(), "--paper", paperFile()};
  words.insert(words.end(), options.begin(), options.end());
  return words;
}

void VirtualPrinter::waitUntilReady() {
  std::string said, line;
  while (process_.readErrorLine(line, longestStart)) {
    if (line.starts_with("ready: ")) return;
    said += line + "\n";
  }
  throw std::runtime_error(terminal::say(
      "la impresora virtual no arrancó; dijo: {}\n¿Está zentaro-printer junto a zentaro, o en PATH?",
      "the virtual printer did not start; it said: {}\n"
      "Is zentaro-printer installed beside zentaro, or in PATH?",
      {said + line}));
}

std::string VirtualPrinter::paper() const {
  std::ostringstream text;
  text << std::ifstream(paperFile()).rdbuf();
  return text.str();
}

}  // namespace zentaro::tools
