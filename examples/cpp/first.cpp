// The smallest sale: each call gives an outcome code, and 0 is the only one after which the next call makes sense.
#include <zentaro.h>

#include <iostream>

#include "virtual_printer.h"  // a printer in software behind COM1, for as long as the object lives

int main() {
  VirtualPrinter paper;
  zentaro::CZentaro printer;
  printer.CommPort = 1;
  printer.PortOpen(true);
  int outcome = printer.IniciarFactura("Ana Pérez", "V-12345678");
  if (outcome == 0)
    outcome = printer.PasarLineaFactura("Café molido", 12.5, 2, 16);  // price, quantity, tax in %
  if (outcome == 0) outcome = printer.RecibirPago(30);
  if (outcome == 0) outcome = printer.CerrarComprobante();
  std::cout << (outcome == 0 ? "printed" : zentaro::utf8(printer.EnvironmentError())) << "\n";
  return outcome;
}
