// The loop over standard input and output.
#include "host/host_command.h"

#include <iostream>
#include <string>

#include "host/session.h"

namespace zentaro::tools {

namespace {

// One line without its end; false at the end of input. Of a line that is too long one byte too many is kept,
// so that the session sees it, and the rest is skipped.
bool readLine(std::istream& input, std::string& line) {
  line.clear();
  std::streambuf& bytes = *input.rdbuf();
  using Traits = std::char_traits<char>;
  for (auto next = bytes.sbumpc(); next != Traits::eof(); next = bytes.sbumpc()) {
    if (next == '\n') return true;
    if (line.size() <= longestLine) line += Traits::to_char_type(next);
  }
  return !line.empty();
}

// The session ends with the function: its objects are destroyed and their ports closed.
int serve(std::istream& input, std::ostream& output) {
  HostSession session;
  for (std::string line; readLine(input, line);) {
    output << session.answer(line) << '\n' << std::flush;
    if (!output) return 1;  // nobody reads any more
  }
  return 0;
}

}  // namespace

void addHostCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand(
      "host", "Serve the library to a program in any language: JSON-RPC over standard input");
  command->footer(
      "One JSON-RPC 2.0 request per line, one response per line, in order:\n"
      "  {\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"create\",\"params\":{\"class\":\"Zentaro.CZentaro\"}}\n"
      "Methods: create, release, get, put, call, describe. The objects that are left at the end of input "
      "are\n"
      "destroyed and their ports closed.");
  command->callback([&status] { status = serve(std::cin, std::cout); });
}

}  // namespace zentaro::tools
