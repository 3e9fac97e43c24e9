// The loop over standard input and output.
#include "tools/host/host_command.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <string>

#include "base/system/interruption.h"
#include "base/terminal/language.h"
#include "tools/host/session.h"

namespace zentaro::tools {

using terminal::say;

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
  HostSession session([&output](const std::string& line) { output << line << '\n' << std::flush; });
  for (std::string line; readLine(input, line);) {
    if (output << session.answer(line) << '\n' << std::flush) session.delivered();
    // Nobody reads any more, or a signal that a sale has put off asks to end.
    if (!output || base::Interruption::isRequested()) return 1;
  }
  return 0;
}

}  // namespace

void addHostCommand(CLI::App& app, int& status) {
  CLI::App* command =
      app.add_subcommand("host", say("Sirve la biblioteca a un programa en cualquier lenguaje, por JSON-RPC",
                                     "Serve the library to a program in any language, by JSON-RPC"));
  command->footer(say(
      "Una petición JSON-RPC 2.0 por línea, una respuesta por línea, en orden:\n"
      "  {\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"create\",\"params\":{\"class\":\"Zentaro.CZentaro\"}}\n"
      "Métodos: create, release, get, put, call, sale, check, close, settle, jobs, describe. Los objetos que quedan al final de la "
      "entrada se destruyen y sus puertos se cierran.",
      "One JSON-RPC 2.0 request per line, one response per line, in order:\n"
      "  {\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"create\",\"params\":{\"class\":\"Zentaro.CZentaro\"}}\n"
      "Methods: create, release, get, put, call, sale, check, close, settle, jobs, describe. The objects that are left at the end of "
      "input are destroyed and their ports closed."));
  command->callback([&status] {
    std::ios::sync_with_stdio(false);  // lines may be long
    status = serve(std::cin, std::cout);
  });
}

}  // namespace zentaro::tools
