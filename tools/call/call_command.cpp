// Opens the port, calls, shows what came of it, and closes.
#include "tools/call/call_command.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <optional>

#include "automation/conversions.h"
#include "base/files/json.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "interface/library.h"
#include "text/unicode.h"
#include "till/line/line_words.h"
#include "till/words/verdict_words.h"
#include "tools/call/call_arguments.h"
#include "tools/connection/connection.h"
#include "tools/show/guarded.h"
#include "tools/show/show.h"
#include "tools/show/signatures.h"

namespace zentaro::tools {

using terminal::say;

namespace {

struct CallOptions {
  PortOptions port;
  bool isJson = false;
  std::vector<std::string> words;
};

struct Outcome {
  Variant result;
  bool isTransaction;  // the member talks to the printer, or checks an argument as those do
  ENVERR_CODES code;
};

Outcome callOnce(Connection& connection, CallRequest& request) {
  const Member& member = request.member.front();
  const Object& object = connection.object();
  if (member.access != Access::Call) return {object.get(member.name), false, ENVERR_OK};
  const Variant result = object.call(member.name, request.arguments);
  const bool isReturned = member.returnsOutcome();
  const auto code =
      isReturned ? static_cast<ENVERR_CODES>(toInt32(result)) : connection.printer().nEnvironmentError;
  return {result, member.outcomes != noOutcome, code};
}

// The answer to another command says nothing about this one, whatever it says.
Outcome callInStep(Connection& connection, CallRequest& request) {
  till::PrinterLine& line = connection.line();
  const till::Stepping stepping = till::steppingOf(request.member.front(), request.arguments);
  if (stepping == till::Stepping::None) return callOnce(connection, request);
  line.startAnywhere();
  if (stepping == till::Stepping::Required) {
    connection.getInStep();
    Outcome outcome = callOnce(connection, request);
    const bool isAnswered = outcome.code == ENVERR_OK || outcome.code == ENVERR_STATUS;
    if (isAnswered && !till::answersLastCommand(connection.printer())) outcome.code = ENVERR_BADSEQ;
    return outcome;
  }
  connection.printer().verifyCheckSum = true;
  std::optional<Outcome> outcome;
  const till::Heard heard = line.askStatus([&] { outcome = callOnce(connection, request); });
  if (heard == till::Heard::Echo || !outcome) throw std::runtime_error(till::trouble(heard));
  return *outcome;
}

// A record is filled after the answer has come, so an error may be raised behind a command that took effect.
Outcome call(Connection& connection, CallRequest& request) {
  try {
    return callInStep(connection, request);
  } catch (const AutomationError& error) {
    const Member& member = request.member.front();
    if (member.outcomes != noOutcome && till::mayBeRaisedBehindTheCommand(error.number(), member))
      std::cerr << say(
          "zentaro: el error puede ser posterior al comando: mire el papel antes de repetirlo\n",
          "zentaro: the error may be raised behind the command: see the paper before you repeat it\n");
    if (!till::mayBeRaisedBehindTheCommand(error.number()))
      std::cerr << say("zentaro: algún argumento no se entiende: {}\n",
                       "zentaro: an argument is not understood: {}\n", {signature(request.member)});
    throw;
  }
}

void showText(Connection& connection, const CallRequest& request, const Outcome& outcome) {
  const CZentaro& printer = connection.printer();
  const bool isOnlyOutcome = request.member.front().returnsOutcome();
  if (outcome.isTransaction)
    std::cout << say("Resultado       ", "Outcome         ") << outcomeLine(outcome.code) << '\n';
  if (!isOnlyOutcome && request.member.front().result.kind != ValueType::None) {
    std::cout << say("Valor           ", "Result          ") << valueText(outcome.result) << '\n';
  }
  if (outcome.isTransaction) std::cout << answerText(printer);
  if (const VirtualPrinter* virtualPrinter = connection.virtualPrinter())
    std::cout << virtualPrinter->paper() << till::virtualNotice() << '\n';
}

void showJson(Connection& connection, const CallRequest& request, const Outcome& outcome) {
  Json json{{"member", request.member.front().name}, {"result", valueJson(outcome.result)}};
  json["arguments"] = valueJson(Array(request.arguments));
  if (outcome.isTransaction) {
    json["outcome"] = static_cast<int>(outcome.code);
    json["outcomeText"] = utf8(outcomeText(outcome.code));
    json.update(answerJson(connection.printer()));
  }
  json["virtual"] = connection.virtualPrinter() != nullptr;
  std::cout << terminal::whole(jsonPage(json));
}

int runCall(const CallOptions& options) {
  CallRequest request = callRequest(*findClass("CZentaro"), options.words);
  Connection connection(options.port);
  const Outcome outcome = call(connection, request);
  const auto show = options.isJson ? showJson : showText;
  show(connection, request, outcome);
  return outcome.code == ENVERR_OK ? exitDone : exitRefused;
}

}  // namespace

void addCallCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<CallOptions>();
  CLI::App* command =
      app.add_subcommand("call", say("Abre el puerto, llama a un miembro, muestra la respuesta y cierra",
                                     "Open the port, call one member, show the answer, close"));
  addPortOptions(*command, options->port);
  command->add_flag(
      "--json", options->isJson,
      say("Muestra resultado y respuesta como JSON", "Show result, outcome and answer as JSON"));
  command
      ->add_option(say("MIEMBRO", "MEMBER"), options->words,
                   say("Nombre de un miembro y sus argumentos", "Name of a member, then its arguments"))
      ->required()
      ->type_name("");
  command->footer(
      say("Argumentos: números enteros, decimales con punto, true, false, fechas como 2024-03-15 o "
          "2024-03-15T14:05:00; lo demás es texto, y también todo lo que sigue a \"text:\", como "
          "text:--nota.\n\n"
          "Sin --port ni --device, y si no hay puerto configurado, se usa una impresora virtual.\n"
          "Estado de salida: 0 con el resultado 0, 1 con otro, 2 cuando no se pudo llamar.\n\n"
          "Ejemplo: zentaro call --device /dev/ttyUSB0 StatusIF N",
          "Arguments: whole numbers, decimals with a point, true, false, dates like 2024-03-15 or "
          "2024-03-15T14:05:00; anything else is a text, and so is everything behind \"text:\", as in "
          "text:--note.\n\n"
          "Without --port and --device, where no port is configured, a virtual printer is used.\n"
          "Exit status: 0 for the outcome 0, 1 for any other, 2 when the call could not be made.\n\n"
          "Example: zentaro call --device /dev/ttyUSB0 StatusIF N"));
  command->callback([options, &status] { status = guarded([&] { return runCall(*options); }); });
}

}  // namespace zentaro::tools
