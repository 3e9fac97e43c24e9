// Closings, memory reports, status requests and device services: the frame that each sends, what it reads
// from the answer, and what it refuses.
#include "support/operations.h"

#include <gtest/gtest.h>

#include "reports/resultado_cierre.h"
#include "reports/status_hasar.h"
#include "reports/status_n.h"

namespace zentaro::testing {
namespace {

class ReportsTest : public PrinterTest {
 protected:
  const Date march15 = dateOf({2024, 3, 15, 14, 5, 9});
  const std::string figures =
      "<FS>1.00<FS>2.00<FS>3.00<FS>4.00<FS>5.00<FS>6.00<FS>7.00<FS>240315<FS>9.00<FS>10.00<FS>11.00<FS>12.00<"
      "FS>13.00"
      "<FS>14.00<FS>15.00<FS>16.00<FS>17.00<FS>3014311224<FS>1234";
};

TEST_F(ReportsTest, EachOperationSendsItsFieldsInOrder) {
  checkOperations(
      *z, line,
      {
          {"X closing", [](auto& p) { return p.RealizarCierre(CIERRE_X); }, "9|X|P"},
          {"X closing unprinted", [](auto& p) { return p.RealizarCierre(CIERRE_X, u"False"); }, "9|X|S"},
          {"Z closing does not look at Imprimir",
           [](auto& p) { return p.RealizarCierre(CIERRE_Z, u"maybe"); }, "9|Z"},
          {"another closing", [](auto& p) { return p.RealizarCierre(static_cast<nTipoCierreFiscal>(5)); },
           "9|Z"},
          {"Z with totals", [](auto& p) { return p.CierreZ(); }, "9|Z|T"},
          {"report by dates", [&](auto& p) { return p.ReporteMemoriaPorFecha(march15, u"2024-03-31"); },
           ":|240315|240331|R"},
          {"report type unchanged",
           [&](auto& p) { return p.ReporteMemoriaPorFecha(march15, march15, u" ñ"); },
           ":|240315|240315| \xF1"},
          {"report by numbers", [](auto& p) { return p.ReporteMemoriaPorNumero(1, u"250"); },
           ":|00000001|00000250|~"},
          {"report numbers rounded",
           [](auto& p) { return p.ReporteMemoriaPorNumero(2.5, 1234567890123.0, u"T"); },
           ":|00000003|1234567890123|T"},
          {"status letter", [](auto& p) { return p.GetDeviceStatus(u"n"); }, "8|N"},
          {"empty status letter", [](auto& p) { return p.GetDeviceStatus(u""); }, "8|~"},
          {"two status letters", [](auto& p) { return p.GetDeviceStatus(u"NE"); }, "nothing", 6},
          {"unknown status letter", [](auto& p) { return p.GetDeviceStatus(u"X"); }, "nothing", 6},
          {"selector as it is", [](auto& p) { return p.StatusIF(u"n").int32(); }, "8|n"},
          {"clock",
           [](auto& p) {
             return p.SetDateTime(dateOf({2025, 2, 1, 9, 5, 7}));
           },
           "X|250201|090507"},
          {"clock by text", [](auto& p) { return p.SetDateTime(u"2025-02-01 09:05:07"); }, "X|250201|090507"},
          {"clock by Empty", [](auto& p) { return p.SetDateTime(Variant()); }, "nothing", 6},
          {"clock by Null", [](auto& p) { return p.SetDateTime(Variant::null()); }, "nothing", 6},
          {"clock by number", [](auto& p) { return p.SetDateTime(45000); }, "nothing", 6},
          {"clock by nonsense", [](auto& p) { return p.SetDateTime(u"45000"); }, "nothing", 6},
          {"clock outside the calendar", [](auto& p) { return p.SetDateTime(Date{1e9}); }, "nothing", 6},
          {"drawer 1", [](auto& p) { return p.AbrirGavetaN(1); }, "{"},
          {"drawer 2 by text", [](auto& p) { return p.AbrirGavetaN(u"2"); }, "|"},
          {"drawer 0", [](auto& p) { return p.AbrirGavetaN(0); }, "nothing", 6},
          {"drawer 3", [](auto& p) { return p.AbrirGavetaN(3); }, "nothing", 6},
          {"drawer Null", [](auto& p) { return p.AbrirGavetaN(Variant::null()); }, "nothing", 6},
          {"cut", [](auto& p) { return p.CortarPapel(); }, "K"},
          {"feed", [](auto& p) { return p.PaperFeed(); }, "P"},
          {"slip on", [](auto& p) { return p.ActivarSlip(); }, "\xA0"},
          {"slip off", [](auto& p) { return p.DesactivarSlip(); }, "\xA1"},
          {"serial number", [](auto& p) { return static_cast<int>(p.SerialImpresora().size()); }, "\x80", 0},
          {"read clock", [](auto& p) { return static_cast<int>(p.GetDateTime().days); }, "Y", 0},
      });
}

TEST_F(ReportsTest, AValueThatDoesNotConvertIsRefused) {
  checkRejections(
      *z, line,
      {
          {"Imprimir", [](auto& p) { p.RealizarCierre(CIERRE_X, u"maybe"); }, 13},
          {"Null date", [&](auto& p) { p.ReporteMemoriaPorFecha(march15, Variant::null()); }, 13},
          {"Empty date", [&](auto& p) { p.ReporteMemoriaPorFecha(Variant(), march15); }, 13},
          {"text that is no date", [&](auto& p) { p.ReporteMemoriaPorFecha(u"x", march15); }, 13},
          {"text that is no number", [](auto& p) { p.ReporteMemoriaPorNumero(1, u"x"); }, 13},
          {"Empty number", [](auto& p) { p.ReporteMemoriaPorNumero(Variant(), 2); }, 13},
          {"Null report type", [](auto& p) { p.ReporteMemoriaPorNumero(1, 2, Variant::null()); }, 94, true},
          {"Null selector", [](auto& p) { p.StatusIF(Variant::null()); }, 94, true},
          {"Null letter", [](auto& p) { p.GetDeviceStatus(Variant::null()); }, 94},
      });
}

TEST_F(ReportsTest, ARejectedArgumentIsStoredOnlyBySomeMembers) {
  struct Row {
    const char* name;
    std::function<void(CZentaro&)> call;
    int stored;
  };
  const Row rows[] = {{"status letter", [](auto& p) { p.GetDeviceStatus(u"X"); }, 6},
                      {"clock", [](auto& p) { p.SetDateTime(Variant()); }, 6},
                      {"drawer", [](auto& p) { p.AbrirGavetaN(7); }, 0},
                      {"header line", [](auto& p) { p.SetTextoFormato(true, 9, u""); }, 0}};
  for (const Row& row : rows) {
    z->nEnvironmentError = ENVERR_OK;
    z->sLastError = u"before";
    row.call(*z);
    EXPECT_EQ(z->nEnvironmentError, row.stored) << row.name;
    EXPECT_EQ(z->sLastError, u"before") << row.name;
  }
}

TEST_F(ReportsTest, ResetIsElevenBareBytesAndFiveSeconds) {
  z->PortOpen(false);
  z->PortOpen(true);
  z->nEnvironmentError = ENVERR_STATUS;
  z->Reset();
  EXPECT_EQ(line.written.back(), "\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10\x11");
  EXPECT_EQ(platform.clock.sleeps, std::vector{std::chrono::milliseconds(5000)});
  EXPECT_EQ(z->nEnvironmentError, ENVERR_STATUS);
  z->CortarPapel();
  EXPECT_EQ(line.written.back()[1], '\x22');
}

TEST_F(ReportsTest, AnswersAreHandedOut) {
  line.answer({{ok('"', 'Y', "<FS>240315<FS>143005")}});
  EXPECT_EQ(calendarTime(z->GetDateTime()), (CalendarTime{2024, 3, 15, 14, 30, 5}));
  line.answer({{ok('#', 'Y', "<FS>241315<FS>143005")}});
  EXPECT_EQ(raised([&] { z->GetDateTime(); }), 13);
  line.answer({{ok('$', 'Z', "<FS>Z1A2")}});
  EXPECT_EQ(z->SerialImpresora(), u"Z1A2");
  line.answer({{ok('%', 'Z')}});
  EXPECT_EQ(z->SerialImpresora(), u"0000");  // its checksum, when the answer has no field

  line.answer({{ok('&', '8', "<FS>z<FS>00<FS>45<FS>240315<FS>1405<FS>7<FS> 2 <FS>12.5<FS>x<FS>3")}});
  const auto normal = z->GetStatusN();
  EXPECT_EQ(normal->CodigoStatus, u"00");
  EXPECT_EQ(calendarTime(normal->FechaImpresora()), (CalendarTime{2024, 3, 15, 14, 5, 0}));
  EXPECT_EQ(normal->FacturasPeriodo(), 7);
  EXPECT_EQ(normal->DNFPeriodo(), 2);
  EXPECT_EQ(normal->NumeroFacturaAcumulado(), 12);
  EXPECT_EQ(raised([&] { (void)normal->NumeroDNFAcumulado(); }), 13);
  EXPECT_EQ(normal->UltimoCierreZ(), 3);

  line.answer({{"<STX>'8<FS>0600<FS>3080<FS>0<FS>1<FS>123<FS>0<FS>7<FS>45<ETX>0000"}});
  const auto numeric = z->GetStatusHASAR();
  EXPECT_EQ(numeric->statusPrinter, 0x0600);
  EXPECT_EQ(numeric->statusFiscal, 0x3080);
  EXPECT_EQ(numeric->numeroUltimaFactura, 123);
  EXPECT_EQ(numeric->numeroUltimoDNF, 45);

  line.answer({{"<STX>(8<FS>0600<FS>8000<FS>0<ETX>0000"}});
  EXPECT_EQ(z->GetStatusN(), nullptr);
  EXPECT_EQ(element(2), "8000");
  line.answer({{ok(')', '8', "<FS>1")}});
  EXPECT_EQ(raised([&] { z->GetStatusHASAR(); }), 9);
}

TEST_F(ReportsTest, AClosingIsHandedOutAsARecord) {
  EXPECT_EQ(z->GetResultadoCierre(), nullptr);
  line.answer({{ok('"', '9', figures)}});
  const auto record = z->PerformReturnCierre(CIERRE_X);
  EXPECT_EQ(sent(), "9|X|P");
  EXPECT_EQ(record->numeroUltimaFactura, 1234);
  EXPECT_EQ(z->GetResultadoCierre()->ImpuestoNCBase3, record->ImpuestoNCBase3);
  line.answer({{ok('#', '9', "<FS>1.00")}});
  EXPECT_EQ(raised([&] { z->PerformReturnCierre(CIERRE_Z); }), 9);
  EXPECT_EQ(z->GetResultadoCierre(), nullptr);
  EXPECT_EQ(z->PerformReturnCierre(CIERRE_Z), nullptr);  // silence
}

}  // namespace
}  // namespace zentaro::testing
