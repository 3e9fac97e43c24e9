// A status, a serial number, and an X without paper.
#include "tools/today/printer_day.h"

#include <cmath>
#include <stdexcept>

#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "tools/connection/connection.h"
#include "zentaro.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;

namespace {

std::int64_t centsOf(Currency amount) { return std::llround(amount.toDouble() * 100); }

}  // namespace

PrinterDay askPrinter(const PortOptions& port) {
  Connection connection(port);
  CZentaro& printer = connection.printer();
  printer.verifyCheckSum = true;
  connection.line().startAnywhere();
  connection.line().getInStep();
  PrinterDay day;
  statusN status;
  status.LoadFromResponse(printer.getResponse(0));
  day.lastZ = status.UltimoCierreZ();
  day.serialNumber = utf8(printer.SerialImpresora());
  printer.RealizarCierre(CIERRE_X, false);
  if (printer.nEnvironmentError != ENVERR_OK)
    throw std::runtime_error(say("la impresora no da los montos del día: {}",
                                 "the printer does not give the day's figures: {}",
                                 {harmless(utf8(printer.EnvironmentError()))}));
  ResultadoCierre figures;
  figures.LoadFromParams(printer.getResponse(0));
  for (const Currency amount :
       {figures.VentasExentas, figures.BaseGravable1, figures.BaseGravable2, figures.BaseGravable3})
    day.net += centsOf(amount);
  for (const Currency amount : {figures.Impuesto1, figures.Impuesto2, figures.Impuesto3})
    day.tax += centsOf(amount);
  for (const Currency amount :
       {figures.MontoExentoNC, figures.ValorNCBase1, figures.ValorNCBase2, figures.ValorNCBase3})
    day.returned += centsOf(amount);
  day.lastInvoice = figures.numeroUltimaFactura;
  return day;
}

}  // namespace zentaro::tools
