// Each call with its outcome, then the paper.
#include "demo/demo_command.h"

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

struct Chapter {
  std::string_view title;
  std::vector<Step> steps;
};

std::vector<Chapter> chapters(const Variant& serial) {
  const Variant date = "2026-03-15";
  return {
      {"The printer",
       {{"GetStatusN", {}},
        {"SerialImpresora", {}},
        {"SetDateTime", {"2026-03-15 14:05:00"}},
        {"GetDateTime", {}}}},
      {"An invoice, partly paid in foreign currency",
       {{"IniciarFactura", {"Inversiones Peñalver, C.A.", "J-30123456-7"}},
        {"PasarLineaFactura", {"Café molido 500 g", 12.5, 2, 16}},
        {"PasarLineaFactura", {"Jamón ahumado", 14.4, 0.75, 16}},
        {"PasarLineaFactura", {"Azúcar 1 kg", 3.2, 1.5, 0}},
        {"RegistrarDescuentoExt", {2, "Cliente frecuente"}},
        {"Subtotal", {}},
        {"PagoConMedio", {"Divisas", 30}},
        {"RecibirPago", {20}},
        {"CerrarComprobanteIGTF", {"T", 30}}}},
      {"A credit note that refers to it",
       {{"IniciarDevolucion", {"Inversiones Peñalver, C.A.", "J-30123456-7", 1, serial, date, "14:05:00"}},
        {"PasarLineaDevolucion", {"Azúcar 1 kg", 3.2, 1.5, 0}},
        {"CerrarComprobante", {}}}},
      {"A cheque",
       {{"LlenarCheque", {1500, "JOSE PEREZ", date}},
        {"EndosarCheque", {"Ana Rojas", "V-12345678", "0212-5551234"}}}},
      {"The end of the day",
       {{"GetStatusHASAR", {}},
        {"PerformReturnCierre", {0}},
        {"PerformReturnCierre", {1}},
        {"ReporteMemoriaPorNumero", {1, 1}}}}};
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

// What a call gives besides its outcome: a record as a table, a text or date behind "=".
void showResult(const Variant& result) {
  if (result.is(Variant::Kind::Object)) {
    std::cout << recordTable(result.object(), "    ");
  } else if (result.is(Variant::Kind::Text) || result.is(Variant::Kind::Date)) {
    std::cout << "  = " << valueText(result) << '\n';
  }
}

bool take(Step step, Connection& connection) {
  std::cout << callText(step) << std::flush;
  const Variant result = connection.object().call(step.member, step.arguments);
  const ENVERR_CODES outcome = connection.printer().nEnvironmentError;
  std::cout << "\n  " << outcomeLine(outcome) << '\n';
  if (outcome == ENVERR_OK) {
    showResult(result);
  } else {
    std::cout << answerText(connection.printer());
  }
  return outcome == ENVERR_OK;
}

int run() {
  PortOptions options;
  options.isVirtual = true;
  Connection connection(options);
  for (const Chapter& chapter : chapters(connection.printer().SerialImpresora())) {
    std::cout << "\n-- " << chapter.title << '\n';
    for (const Step& step : chapter.steps) {
      if (Interruption::isRequested() || !take(step, connection)) return exitRefused;
    }
  }
  std::cout << "\n-- The paper\n\n" << connection.virtualPrinter()->paper() << '\n';
  return exitDone;
}

}  // namespace

void addDemoCommand(CLI::App& app, int& status) {
  CLI::App* command = app.add_subcommand(
      "demo", "An invoice, a credit note, a cheque and the end of a day, on a virtual printer");
  command->callback([&status] { status = guarded(run); });
}

}  // namespace zentaro::tools
