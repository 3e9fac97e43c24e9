// A small sale. `sale 2` prints on the printer at COM2; without a port it prints on a virtual printer.
#include <zentaro.h>

#include <iostream>
#include <optional>

#include "virtual_printer.h"

namespace {

// Stops the sale at the first step that the printer did not accept.
void check(const zentaro::CZentaro& printer, const char* step, int outcome) {
  std::cout << step << ": " << outcome << "\n";
  if (outcome != zentaro::ENVERR_OK) throw std::runtime_error(zentaro::utf8(printer.EnvironmentError()));
}

void sell(zentaro::CZentaro& printer) {
  check(printer, "IniciarFactura", printer.IniciarFactura("Ana Pérez", "V-12345678"));
  check(printer, "PasarLineaFactura", printer.PasarLineaFactura("Café molido", 12.5, 2, 16));
  check(printer, "PasarLineaFactura", printer.PasarLineaFactura("Queso blanco", 8, 0.75, 0));
  check(printer, "RecibirPago", printer.RecibirPago(40));
  check(printer, "CerrarComprobante", printer.CerrarComprobante());
}

}  // namespace

int main(int argc, char** argv) {
  try {
    std::optional<VirtualPrinter> paper;
    if (argc < 2) paper.emplace();
    zentaro::CZentaro printer;
    printer.CommPort = argc < 2 ? "1" : argv[1];
    printer.PortOpen(true);
    sell(printer);
    printer.PortOpen(false);
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 1;
  }
  return 0;
}
