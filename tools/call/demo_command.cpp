// Each call with its outcome, then the paper.
#include "call/demo_command.h"

#include <iostream>

#include "common/connection.h"
#include "common/guarded.h"
#include "common/show.h"

namespace zentaro::tools {

namespace {

struct Step {
  std::string_view member;
  std::vector<Variant> arguments;
};

std::vector<Step> steps() {
  return {{"IniciarFactura", {"Inversiones La Ceiba, C.A.", "J-30123456-7"}},
          {"PasarLineaFactura", {"Café molido 500 g", 12.5, 2, 16}},
          {"PasarLineaFactura", {"Azúcar 1 kg", 3.2, 1.5, 0}},
          {"Subtotal", {}},
          {"RegistrarDescuento", {2}},
          {"PagoConMedio", {"Efectivo", 35}},
          {"CerrarComprobante", {"T"}},
          {"RealizarCierre", {1}}};
}

std::string callText(const Step& step) {
  std::string arguments;
  for (const Variant& argument : step.arguments) {
    const bool isText = argument.is(Variant::Kind::Text);
    arguments +=
        (arguments.empty() ? "" : ", ") + (isText ? jsonLine(valueJson(argument)) : valueText(argument));
  }
  return std::string(step.member) + "(" + arguments + ")";
}

bool take(Step step, Connection& connection) {
  std::cout << callText(step) << std::flush;
  connection.object().call(step.member, step.arguments);
  const ENVERR_CODES outcome = connection.printer().nEnvironmentError;
  std::cout << "\n  " << outcomeLine(outcome) << '\n';
  if (outcome != ENVERR_OK) std::cout << answerText(connection.printer());
  return outcome == ENVERR_OK;
}

int run() {
  Connection connection({});
  for (const Step& step : steps()) {
    if (!take(step, connection)) return exitRefused;
  }
  std::cout << "\nThe paper:\n\n" << connection.virtualPrinter()->paper();
  return exitDone;
}

}  // namespace

void addDemoCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand("demo", "An invoice and the end of the day, on a virtual printer");
  command->callback([&status] { status = guarded(run); });
}

}  // namespace zentaro::tools
