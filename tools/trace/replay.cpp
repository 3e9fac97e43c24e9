// The loop of the scripted printer.
#include "tools/trace/replay.h"

#include <iostream>

#include "base/terminal/language.h"
#include "virtual-printer/device/commands.h"
#include "virtual-printer/line/terminal.h"
#include "virtual-printer/wire/receiver.h"

namespace zentaro::tools {

using terminal::say;

namespace {

std::string nameOf(const virtual_printer::Command& command) {
  const virtual_printer::CommandEntry* known = virtual_printer::findCommand(command.code);
  return virtual_printer::hexadecimal(command.code, 2) +
         (known == nullptr ? "" : " " + std::string(known->name));
}

void answer(const virtual_printer::Command& command, Script& script, virtual_printer::HostLine& line) {
  const Script::Reply reply = script.answer(command);
  line.write(reply.bytes);
  std::cerr << nameOf(command)
            << (!reply.isRecorded
                    ? say(": ya no está en la traza, sin respuesta", ": not in the trace any more, no answer")
                : reply.bytes.empty()
                    ? say(": sin respuesta, como en la traza", ": no answer, as in the trace")
                    : say(": respondido", ": answered"))
            << say("; quedan {}", "; {} left", {std::to_string(script.left())}) << std::endl;
}

}  // namespace

void replay(Script script) {
  const std::unique_ptr<virtual_printer::HostLine> line = virtual_printer::makeTerminal({});
  line->connect();
  std::cout << line->name() << std::endl;
  virtual_printer::Receiver receiver;
  while (true) {
    constexpr std::chrono::seconds idleCheck{1};
    virtual_printer::WatchList watched;
    line->watch(watched);
    if (!virtual_printer::waitFor(watched, idleCheck)) {
      line->rest();
      continue;
    }
    for (const virtual_printer::Received& received : receiver.feed(line->read(watched)))
      if (const auto* command = std::get_if<virtual_printer::Command>(&received))
        answer(*command, script, *line);
  }
}

}  // namespace zentaro::tools
