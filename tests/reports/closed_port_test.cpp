// Every operation on a closed port: who looks at the port and who does not.
#include <gtest/gtest.h>

#include "reports/resultado_cierre.h"
#include "reports/status_hasar.h"
#include "reports/status_n.h"
#include "support/operations.h"

namespace zentaro::testing {
namespace {

using ClosedPortTest = PrinterTest;

TEST_F(ClosedPortTest, MembersThatLookChangeNothing) {
  const std::vector<std::pair<const char*, std::function<int(CZentaro&)>>> members = {
      {"ExecuteCMD", [](auto& p) { return p.ExecuteCMD(72); }},
      {"ExecuteOMB", [](auto& p) { return p.ExecuteOMB(u"x"); }},
      {"RealizarCierre", [](auto& p) { return p.RealizarCierre(CIERRE_X, u"maybe"); }},
      {"CierreZ", [](auto& p) { return p.CierreZ(); }},
      {"ReporteMemoriaPorFecha", [](auto& p) { return p.ReporteMemoriaPorFecha(u"x", u"x"); }},
      {"ReporteMemoriaPorNumero", [](auto& p) { return p.ReporteMemoriaPorNumero(u"x", u"x"); }},
      {"IniciarFactura", [](auto& p) { return p.IniciarFactura(Variant::null()); }},
      {"IniciarDevolucion", [](auto& p) { return p.IniciarDevolucion(Variant::null()); }},
      {"PasarLineaFactura", [](auto& p) { return p.PasarLineaFactura(u"x", u"x", u"x", u"x"); }},
      {"PasarLineaDevolucion", [](auto& p) { return p.PasarLineaDevolucion(u"x", u"x", u"x", u"x"); }},
      {"PasarLineaExtra", [](auto& p) { return p.PasarLineaExtra(Variant::null()); }},
      {"RecibirPago", [](auto& p) { return p.RecibirPago(u"x"); }},
      {"PagoConMedio", [](auto& p) { return p.PagoConMedio(1, u"x"); }},
      {"RegistrarDescuento", [](auto& p) { return p.RegistrarDescuento(u"x"); }},
      {"RegistrarDescuentoExt", [](auto& p) { return p.RegistrarDescuentoExt(u"x", u"x"); }},
      {"CancelarComprobante", [](auto& p) { return p.CancelarComprobante(); }},
      {"AbrirDNF", [](auto& p) { return p.AbrirDNF(); }},
      {"PasarLineaDNF", [](auto& p) { return p.PasarLineaDNF(Variant::null()); }},
      {"CerrarDNF", [](auto& p) { return p.CerrarDNF(); }},
      {"GetDeviceStatus", [](auto& p) { return p.GetDeviceStatus(u"NE"); }},
      {"SetDateTime", [](auto& p) { return p.SetDateTime(Variant()); }},
      {"SetTextoFormato", [](auto& p) { return p.SetTextoFormato(true, 9, u"x"); }},
      {"AbrirGavetaN", [](auto& p) { return p.AbrirGavetaN(1); }},
      {"CortarPapel", [](auto& p) { return p.CortarPapel(); }},
      {"PaperFeed", [](auto& p) { return p.PaperFeed(); }},
      {"ActivarSlip", [](auto& p) { return p.ActivarSlip(); }},
      {"DesactivarSlip", [](auto& p) { return p.DesactivarSlip(); }},
      {"LlenarCheque", [](auto& p) { return p.LlenarCheque(u"x", u"x", u"x"); }},
      {"EndosarCheque", [](auto& p) { return p.EndosarCheque(Variant::null(), u"x", u"x"); }},
  };
  line.answer({{ok('"', 'H', "<FS>kept")}});
  z->ExecuteCMD(72);
  z->PortOpen(false);
  z->nEnvironmentError = ENVERR_STATUS;
  for (const auto& [name, member] : members) {
    EXPECT_EQ(member(*z), -1) << name;
    EXPECT_EQ(z->nEnvironmentError, ENVERR_STATUS) << name;
    EXPECT_EQ(z->nLastCommand, 72) << name;
    EXPECT_EQ(z->dwordPrinterStatus, 0x0600) << name;
    EXPECT_EQ(element(3), "kept") << name;
  }
  EXPECT_EQ(z->AbrirGavetaN(0), 6);
  EXPECT_EQ(z->SerialImpresora(), u"");
  EXPECT_EQ(z->GetDateTime(), Date{0});
  EXPECT_EQ(z->PerformReturnCierre(CIERRE_Z), nullptr);
  EXPECT_EQ(line.written.size(), 1U);
}

TEST_F(ClosedPortTest, MembersThatDoNotLookRunIntoTheTimeOut) {
  z->PortOpen(false);
  EXPECT_EQ(z->StatusIF(u"N").int32(), 1);
  EXPECT_EQ(z->GetStatusN(), nullptr);
  EXPECT_EQ(z->GetStatusHASAR(), nullptr);
  EXPECT_EQ(z->Subtotal(), 1);
  EXPECT_EQ(z->CerrarComprobante(), 1);
  EXPECT_EQ(z->CerrarComprobanteIGTF().int32(), 1);
  EXPECT_EQ(z->execute(u"x"), 1);
  EXPECT_TRUE(z->response(0).is(Variant::Kind::Empty));
}

}  // namespace
}  // namespace zentaro::testing
