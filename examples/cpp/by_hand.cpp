// A small sale that is never printed twice, step by step with the printer object alone: what sale.cpp has
// done by one call. `by_hand 2` prints at COM2; without a port it prints on a virtual printer.
#include <zentaro.h>

#include <chrono>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <random>
#include <thread>

#include "virtual_printer.h"

namespace {

using zentaro::CZentaro, zentaro::statusHASAR;

struct Verdict {
  const char* text;
  int status;
};

// Done; the first field of an answer is the command that it answers.
bool answered(const CZentaro& printer) {
  return printer.nEnvironmentError == zentaro::ENVERR_OK &&
         toInt32(printer.response(0)) == printer.nLastCommand;
}

// The amount sold today, in ten-thousandths; nothing is printed. Nothing when the printer does not say.
std::optional<std::int64_t> sold(CZentaro& printer) {
  printer.RealizarCierre(zentaro::CIERRE_X, false);
  if (!answered(printer)) return std::nullopt;
  const auto day = printer.GetResultadoCierre();
  return day->VentasExentas.scaled() + day->BaseGravable1.scaled() + day->BaseGravable2.scaled() +
         day->BaseGravable3.scaled();
}

// The status, as soon as an answer is the one to its question; null when that takes longer than
// half a minute.
std::unique_ptr<statusHASAR> inStep(CZentaro& printer) {
  for (const int pause : {500, 1000, 2000, 4000, 8000, 16000}) {
    // Late answers gather while the port is open, and opening it throws them away.
    std::this_thread::sleep_for(std::chrono::milliseconds(pause));
    try {
      printer.PortOpen(false);
      printer.PortOpen(true);
    } catch (const zentaro::AutomationError&) {
      continue;  // an adapter that was pulled out
    }
    auto status = printer.GetStatusHASAR();
    if (status && answered(printer)) return status;
  }
  return nullptr;
}

// What became of a sale that did not go through: asked, never sent again.
Verdict settled(CZentaro& printer, std::int64_t before) {
  auto status = inStep(printer);
  if (status && status->statusDocumento != 0) {
    printer.CancelarComprobante();
    status = inStep(printer);
  }
  if (status && status->statusDocumento != 0) return {"STILL OPEN: have the document cancelled", 4};
  const auto after = status ? sold(printer) : std::nullopt;
  if (!after) return {"UNKNOWN: look at the paper, do not print again", 4};
  return *after > before ? Verdict{"PRINTED", 0} : Verdict{"NOT PRINTED", 3};
}

Verdict sell(CZentaro& printer) {
  printer.verifyCheckSum = true;
  for (int place = std::random_device()() % 90; place > 0; --place) {
    printer.BuildOMB(0x38, {u"*"});  // another place in the sequence than the program before
  }
  const auto status = inStep(printer);
  const auto before = status && status->statusDocumento == 0 ? sold(printer) : std::nullopt;
  if (!before) return {"NOT PRINTED: no printer, or a document is open", 3};
  const std::pair<const char*, std::function<int()>> steps[] = {
      {"IniciarFactura", [&] { return printer.IniciarFactura("Ana Pérez", "V-12345678"); }},
      {"PasarLineaFactura", [&] { return printer.PasarLineaFactura("Café molido", 12.5, 2, 16); }},
      {"PasarLineaFactura", [&] { return printer.PasarLineaFactura("Queso blanco", 8, 0.75, 0); }},
      {"RecibirPago", [&] { return printer.RecibirPago(40); }},
      {"CerrarComprobante", [&] { return printer.CerrarComprobante(); }}};
  for (const auto& [name, step] : steps) {
    std::cout << name << ": " << step() << " " << zentaro::utf8(printer.sLastError) << "\n";
    if (!answered(printer)) return settled(printer, *before);
  }
  return {"PRINTED", 0};
}

}  // namespace

int main(int argc, char** argv) {
  try {
    std::optional<VirtualPrinter> paper;
    if (argc < 2) paper.emplace();
    CZentaro printer;
    printer.CommPort = argc < 2 ? "1" : argv[1];
    printer.PortOpen(true);
    const Verdict verdict = sell(printer);
    std::cout << verdict.text << "\n";
    return verdict.status;
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 2;
  }
}
