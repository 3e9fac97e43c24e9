// A shop's day on the virtual printer: a sale, a credit note for it, a cheque, and the closings
// with their figures.
#include <gtest/gtest.h>

#include "automation/conversions.h"
#include "reports/resultado_cierre.h"
#include "reports/status_hasar.h"
#include "reports/status_n.h"
#include "tools/connection/connection.h"

namespace zentaro::testing::day_test {

class DayTest : public ::testing::Test {
 protected:
  tools::Connection connection{tools::PortOptions{}, {"--serial", "ZPV0000007", "--igtf", "3"}};
  CZentaro& z = connection.printer();

  std::string paper() const { return connection.virtualPrinter()->paper(); }
  bool printed(const std::string& text) const { return paper().find(text) != std::string::npos; }
  std::string error() const { return utf8(z.EnvironmentError()); }
  double amount(int field) const { return toDouble(z.response(field)) / 100; }

  // 25.00 and 12.00 at 16 %, 4.00 off before tax; 33.00 + 5.28
  void sell() {
    ASSERT_EQ(z.IniciarFactura("José Núñez", "V-12345678"), 0) << error();
    ASSERT_EQ(z.PasarLineaFactura("Café \"molido\"", 10, 2.5, 16), 0) << error();
    ASSERT_EQ(z.PasarLineaFactura("Azúcar", 12, 1, 16), 0) << error();
    ASSERT_EQ(z.RegistrarDescuentoExt(4, u"Cliente fiel"), 0) << error();
    ASSERT_EQ(z.Subtotal(), 0) << error();
    ASSERT_DOUBLE_EQ(amount(3), 38.28);
    ASSERT_EQ(z.PagoConMedio(u"Divisas", 20), 0) << error();
    ASSERT_EQ(z.RecibirPago(20), 0) << error();
    ASSERT_EQ(z.CerrarComprobanteIGTF(u"T", 20).int32(), 0) << error();
    ASSERT_DOUBLE_EQ(amount(4), 38.88);
    ASSERT_DOUBLE_EQ(amount(5), 1.12);
  }
};

TEST_F(DayTest, ASaleWithIgtfAndItsCreditNote) {
  sell();
  for (const char* text : {"RAZON SOCIAL: Jose Nunez", "2,500 x Bs 10,00", "Cafe 'molido' (G)", "Azucar (G)",
                           "IGTF", "0,60", "38,88"}) {
    EXPECT_TRUE(printed(text)) << text << "\n" << paper();
  }
  ASSERT_EQ(z.IniciarDevolucion("José Núñez", "V-12345678", u"00000001", z.SerialImpresora(), Date{45366.5},
                                Date{0.5}),
            0)
      << error();
  EXPECT_EQ(z.PasarLineaFactura("x", 1, 1, 16), 5);
  EXPECT_EQ(z.sLastError.substr(0, 8), u"ERROR 05");
  EXPECT_EQ(z.BitFiscal(15), 32768);
  EXPECT_EQ(z.PasarLineaDevolucion("Azúcar", 12, 1, 16), 0) << error();
  EXPECT_EQ(z.CerrarComprobante(), 0) << error();
  EXPECT_TRUE(printed("NOTA DE CREDITO")) << paper();

  const auto status = z.GetStatusHASAR();
  ASSERT_NE(status, nullptr);
  EXPECT_EQ(status->statusDocumento, 0);
  EXPECT_EQ(status->numeroUltimaFactura, 1);
  EXPECT_EQ(status->numeroUltimaNC, 1);
}

TEST_F(DayTest, TheClosingsGiveTheFiguresOfTheDay) {
  sell();
  const auto x = z.PerformReturnCierre(CIERRE_X);
  ASSERT_NE(x, nullptr) << error();
  EXPECT_EQ(x->BaseGravable1.toDouble(), 33);
  EXPECT_EQ(x->Impuesto1.toDouble(), 5.28);
  EXPECT_EQ(x->ValorDescuentos.toDouble(), 4);
  EXPECT_EQ(x->numeroUltimaFactura, 1);
  ASSERT_EQ(z.CierreZ(), 0) << error();
  EXPECT_EQ(z.GetResultadoCierre()->BaseGravable1, x->BaseGravable1);
  ASSERT_EQ(z.ReporteMemoriaPorNumero(1, 1), 0) << error();
  EXPECT_EQ(z.PerformReturnCierre(CIERRE_X)->BaseGravable1.toDouble(), 0);  // a new day
  const auto status = z.GetStatusN();
  ASSERT_NE(status, nullptr);
  EXPECT_EQ(status->UltimoCierreZ(), 1);
  EXPECT_EQ(status->NumeroFacturaAcumulado(), 1);
}

TEST_F(DayTest, ServicesWork) {
  EXPECT_EQ(z.SerialImpresora(), u"ZPV0000007");
  ASSERT_EQ(z.SetDateTime(u"2024-03-15 14:30:00"), 0) << error();
  EXPECT_EQ(isoText(z.GetDateTime()).substr(0, 15), "2024-03-15T14:3");
  EXPECT_EQ(z.SetTextoFormato(true, 1, u"Gracias por su visita"), 0) << error();
  EXPECT_EQ(z.AbrirDNF(), 0);
  EXPECT_EQ(z.PasarLineaDNF(u"Corte de caja"), 0);
  EXPECT_EQ(z.IniciarFactura(), 5);
  EXPECT_EQ(z.CerrarDNF(), 0);
  EXPECT_EQ(z.AbrirGavetaN(1), 0);
  EXPECT_EQ(z.LlenarCheque(Currency::fromScaled(15000000), u"JOSE PEREZ", u"2024-03-15"), 0) << error();
  EXPECT_EQ(z.EndosarCheque(u"Ana", u"V-1", u"0212-5551234"), 0) << error();
  EXPECT_EQ(z.nLastCommand, 161);
  for (const char* text : {"Corte de caja", "1,500.00", "JOSE PEREZ", "0212-5551234"}) {
    EXPECT_TRUE(printed(text)) << text << "\n" << paper();
  }
}

}  // namespace zentaro::testing::day_test
