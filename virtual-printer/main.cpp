// zentaro-printer: a fiscal printer in software, on a pseudo-terminal or over TCP.
#include <exception>
#include <variant>

#include "base/terminal/console.h"
#include "base/terminal/screen.h"
#include "virtual-printer/shell/notices.h"
#include "virtual-printer/shell/options.h"
#include "virtual-printer/shell/program.h"

int main(int count, char** words) {
  const zentaro::terminal::Utf8Console console;
  const zentaro::terminal::FittedOutput fitted;
  std::vector<std::string> own = zentaro::terminal::commandLineWords(count, words);
  try {
    auto parsed = virtual_printer::parseOptions(count, zentaro::terminal::argumentVector(own).data());
    if (const int* exitCode = std::get_if<int>(&parsed)) return *exitCode;
    virtual_printer::runProgram(std::get<virtual_printer::Options>(std::move(parsed)));
    return 0;
  } catch (const std::exception& error) {
    virtual_printer::complain(error.what());
    return 1;
  }
}
