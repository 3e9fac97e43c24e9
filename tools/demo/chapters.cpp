// A short day: an invoice, a credit note, a cheque and the closings.
#include "tools/demo/chapters.h"

#include "base/terminal/language.h"

namespace zentaro::tools {

std::vector<DemoChapter> demoChapters(const Variant& serial) {
  const Variant date = "2026-03-15";
  return {
      {terminal::say("La impresora", "The printer"),
       {{"GetStatusN", {}},
        {"SerialImpresora", {}},
        {"SetDateTime", {"2026-03-15 14:05:00"}},
        {"GetDateTime", {}}}},
      {terminal::say("Una factura, pagada en parte en divisas",
                     "An invoice, partly paid in foreign currency"),
       {{"IniciarFactura", {"Inversiones Peñalver, C.A.", "J-30123456-7"}},
        {"PasarLineaFactura", {"Café molido 500 g", 12.5, 2, 16}},
        {"PasarLineaFactura", {"Jamón ahumado", 14.4, 0.75, 16}},
        {"PasarLineaFactura", {"Azúcar 1 kg", 3.2, 1.5, 0}},
        {"RegistrarDescuentoExt", {2, "Cliente frecuente"}},
        {"Subtotal", {}},
        {"PagoConMedio", {"Divisas", 30}},
        {"RecibirPago", {20}},
        {"CerrarComprobanteIGTF", {"T", 30}}}},
      {terminal::say("Una nota de crédito sobre ella", "A credit note that refers to it"),
       {{"IniciarDevolucion", {"Inversiones Peñalver, C.A.", "J-30123456-7", 1, serial, date, "14:05:00"}},
        {"PasarLineaDevolucion", {"Azúcar 1 kg", 3.2, 1.5, 0}},
        {"CerrarComprobante", {}}}},
      {terminal::say("Un cheque", "A cheque"),
       {{"LlenarCheque", {1500, "JOSE PEREZ", date}},
        {"EndosarCheque", {"Ana Rojas", "V-12345678", "0212-5551234"}}}},
      {terminal::say("El fin del día", "The end of the day"),
       {{"GetStatusHASAR", {}},
        {"PerformReturnCierre", {0}},
        {"PerformReturnCierre", {1}},
        {"ReporteMemoriaPorNumero", {1, 1}}}}};
}

}  // namespace zentaro::tools
