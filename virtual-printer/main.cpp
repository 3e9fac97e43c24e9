// zentaro-printer: a fiscal printer in software, on a pseudo-terminal.
#include <cstdio>
#include <exception>
#include <variant>

#include "shell/options.h"
#include "shell/program.h"

int main(int count, char** words) {
  try {
    const auto parsed = printer::parseOptions(count, words);
    if (const int* exitCode = std::get_if<int>(&parsed)) return *exitCode;
    return printer::runProgram(std::get<printer::Options>(parsed));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zentaro-printer: %s\n", error.what());
    return 1;
  }
}
