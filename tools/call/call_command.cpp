// Opens the port, calls, shows what came of it, and closes.
#include "call/call_command.h"

#include <iostream>
#include <memory>

#include "automation/conversions.h"
#include "call/call_arguments.h"
#include "common/connection.h"
#include "common/guarded.h"
#include "common/show.h"
#include "interface/library.h"
#include "text/unicode.h"

namespace zentaro::tools {

namespace {

struct Options {
  PortOptions port;
  bool isJson = false;
  std::vector<std::string> words;
};

struct Outcome {
  Variant result;
  bool isTransaction;  // the member talks to the printer, or checks an argument as those do
  ENVERR_CODES code;
};

Outcome call(Connection& connection, CallRequest& request) {
  const Member& member = request.member.front();
  const Object& object = connection.object();
  if (member.access != Access::Call) return {object.get(member.name), false, ENVERR_OK};
  const Variant result = object.call(member.name, request.arguments);
  const bool isReturned = member.returnsOutcome();
  const auto code =
      isReturned ? static_cast<ENVERR_CODES>(toInt32(result)) : connection.printer().nEnvironmentError;
  return {result, member.effect.outcomes != noOutcome, code};
}

void showText(const CZentaro& printer, const CallRequest& request, const Outcome& outcome) {
  const bool isOnlyOutcome = request.member.front().returnsOutcome();
  if (outcome.isTransaction) std::cout << "Outcome         " << outcomeLine(outcome.code) << '\n';
  if (!isOnlyOutcome && request.member.front().result.kind != ValueType::None) {
    std::cout << "Result          " << valueText(outcome.result) << '\n';
  }
  if (outcome.isTransaction) std::cout << answerText(printer);
}

void showJson(const CZentaro& printer, const CallRequest& request, const Outcome& outcome) {
  Json json{{"member", request.member.front().name}, {"result", valueJson(outcome.result)}};
  json["arguments"] = valueJson(Array(request.arguments));
  if (outcome.isTransaction) {
    json["outcome"] = static_cast<int>(outcome.code);
    json["outcomeText"] = utf8(outcomeText(outcome.code));
    json.update(answerJson(printer));
  }
  std::cout << jsonPage(json);
}

int run(const Options& options) {
  CallRequest request = callRequest(*findClass("CZentaro"), options.words);
  Connection connection(options.port);
  const Outcome outcome = call(connection, request);
  const auto show = options.isJson ? showJson : showText;
  show(connection.printer(), request, outcome);
  return outcome.code == ENVERR_OK ? exitDone : exitRefused;
}

}  // namespace

void addCallCommand(CLI::App& app, int& status) {
  auto options = std::make_shared<Options>();
  CLI::App* command = app.add_subcommand("call", "Open the port, call one member, show the answer, close");
  addPortOptions(*command, options->port);
  command->add_flag("--json", options->isJson, "Show result, outcome and answer as JSON");
  command->add_option("MEMBER", options->words, "Name of a member, then its arguments")
      ->required()
      ->type_name("");
  command->footer(
      "Arguments: whole numbers, decimals with a point, true, false, dates like 2024-03-15 or\n"
      "2024-03-15T14:05:00; anything else is a text, and so is everything behind \"text:\". After the "
      "member's\n"
      "name there are only arguments, no options.\n\n"
      "Without --port and --device a virtual printer is started for the call.\n"
      "Exit status: 0 for the outcome 0, 1 for any other, 2 when the call could not be made.\n\n"
      "Example: zentaro call --device /dev/ttyUSB0 StatusIF N");
  command->callback([options, &status] { status = guarded([&] { return run(*options); }); });
}

}  // namespace zentaro::tools
