// Closings, memory reports, status requests and device services: the frame that each sends, what it reads
// from the answer, and what it refuses.
#include "support/operations.h"

#include "reports/resultado_cierre.h"
#include "reports/status_hasar.h"
#include "reports/status_n.h"

namespace zentaro::testing::reports_test {

using ReportsTest = OperationTest;

TEST_F(ReportsTest, EachOperationSendsItsFieldsOrRefusesThem) {
  check(R"(
    RealizarCierre 0 => 9|X|P
    RealizarCierre 0 'False' => 9|X|S
    RealizarCierre 0 'maybe' => raises 13
    - a Z does not look at Imprimir
    RealizarCierre 1 'maybe' => 9|Z
    RealizarCierre 5 => 9|Z
    CierreZ => 9|Z|T

    ReporteMemoriaPorFecha 2024-03-15T14:05:09 '2024-03-31' => :|240315|240331|R
    ReporteMemoriaPorFecha 2024-03-15 2024-03-15 ' ñ' => :|240315|240315| ñ
    ReporteMemoriaPorFecha 1999-12-31 1900-01-01 '' => :|991231|000101|~
    ReporteMemoriaPorFecha 2024-03-15 null => raises 13
    ReporteMemoriaPorFecha empty 2024-03-15 => raises 13
    ReporteMemoriaPorFecha 'x' 2024-03-15 => raises 13
    ReporteMemoriaPorNumero 1 '250' => :|00000001|00000250|~
    ReporteMemoriaPorNumero 2.5 1234567890123.0 'T' => :|00000003|1234567890123|T
    ReporteMemoriaPorNumero '9007199254740993' '12,345.6' => :|9007199254740993|00012346|~
    ReporteMemoriaPorNumero -0.4 -0.5 => :|00000000|-00000001|~
    ReporteMemoriaPorNumero 1 'x' => raises 13
    ReporteMemoriaPorNumero empty 2 => raises 13
    ReporteMemoriaPorNumero true 2 => raises 13
    ReporteMemoriaPorNumero 1 2 null => raises 94 late

    StatusIF 'n' => 8|n
    StatusIF null => raises 94 late
    GetStatusN => 8|N
    GetStatusHASAR => 8|*
    GetDeviceStatus 'n' => 8|N
    GetDeviceStatus 'e' => 8|E
    GetDeviceStatus 'a' => 8|A
    GetDeviceStatus 'b' => 8|B
    GetDeviceStatus 'C' => 8|C
    GetDeviceStatus 'D' => 8|D
    GetDeviceStatus 'R' => 8|R
    GetDeviceStatus 'F' => 8|F
    GetDeviceStatus 'J' => 8|J
    GetDeviceStatus '' => 8|~
    GetDeviceStatus 'NE' => returns 6 stored
    GetDeviceStatus 'X' => returns 6 stored
    GetDeviceStatus null => raises 94

    SetDateTime 2025-02-01T09:05:07 => X|250201|090507
    SetDateTime '2025-02-01 09:05:07' => X|250201|090507
    SetDateTime empty => returns 6 stored
    SetDateTime null => returns 6 stored
    SetDateTime 45000 => returns 6 stored
    SetDateTime '45000' => returns 6 stored
    GetDateTime => Y
    SerialImpresora => <80>

    AbrirGavetaN 1 => {
    AbrirGavetaN '2' => |
    AbrirGavetaN 1.5 => |
    AbrirGavetaN 0.6 => returns 6
    AbrirGavetaN 2.4 => returns 6
    AbrirGavetaN null => returns 6
    CortarPapel => K
    PaperFeed => P
    ActivarSlip => <A0>
    DesactivarSlip => <A1>)");
  EXPECT_EQ(z->SetDateTime(Date{1e9}), 6) << "outside the calendar";
  z->ReporteMemoriaPorNumero(Currency::fromScaled(9'223'372'036'854'765'001), 1);
  EXPECT_EQ(sent(), ":|922337203685477|00000001|~") << "with all digits of a currency";
  z->PortOpen(false);
  check("AbrirGavetaN 3 => returns 6\nAbrirGavetaN 1 => returns -1\nSerialImpresora => returns ");
}

TEST_F(ReportsTest, ResetIsElevenBareBytesAndFiveSeconds) {
  line.answer({{"<STX>\"K<FS>0600<FS>8001<FS>ERROR 1<ETX>0000"}});
  z->CortarPapel();
  z->Reset();
  EXPECT_EQ(line.written.back(), "\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10\x11");
  EXPECT_EQ(platform.clock.sleeps, std::vector{std::chrono::milliseconds(5000)});
  EXPECT_EQ(z->EnvironmentError(), u"PRINTER STATUS\r\n(PS:0600H, EF:8001H) \r\nERROR 1.\r\nComando = 4BH");
  EXPECT_EQ(element(3), "ERROR 1") << "what the last exchange left stays";
  z->CortarPapel();
  EXPECT_EQ(line.written.back()[1], '\x23');
  z->PortOpen(false);
  z->Reset();
  EXPECT_EQ(platform.clock.sleeps.size(), 2U) << "whether the port is open or not";
}

TEST_F(ReportsTest, AnswersAreHandedOut) {
  line.answer({{ok('"', 'Y', "<FS>240315<FS>143005")}});
  EXPECT_EQ(calendarTime(z->GetDateTime()), (CalendarTime{2024, 3, 15, 14, 30, 5}));
  line.answer({{ok('#', 'Y', "<FS>240315<FS>1430x05")}});
  EXPECT_EQ(calendarTime(z->GetDateTime()), (CalendarTime{2024, 3, 15, 14, 30, 5}));
  line.answer({{ok('$', 'Y', "<FS>241315<FS>143005")}});
  EXPECT_EQ(errorOf([&] { z->GetDateTime(); }), 13);
  line.answer({{ok('%', 'Z', "<FS>Z1A2")}});
  EXPECT_EQ(z->SerialImpresora(), u"Z1A2");
  line.answer({{ok('&', 'Z')}});
  EXPECT_EQ(z->SerialImpresora(), u"0000") << "its checksum, when the answer has no field";

  line.answer({{ok('\'', '8', "<FS>z<FS>00<FS>45<FS>240315<FS>1405<FS>7<FS> 2 <FS>12.5<FS>x<FS>3")}});
  const auto normal = z->GetStatusN();
  EXPECT_EQ(normal->CodigoStatus + normal->UltimoComando, u"0045");
  EXPECT_EQ(calendarTime(normal->FechaImpresora()), (CalendarTime{2024, 3, 15, 14, 5, 0}));
  EXPECT_EQ(normal->FacturasPeriodo(), 7);
  EXPECT_EQ(normal->DNFPeriodo(), 2);
  EXPECT_EQ(normal->NumeroFacturaAcumulado(), 12);
  EXPECT_EQ(errorOf([&] { (void)normal->NumeroDNFAcumulado(); }), 13);
  EXPECT_EQ(normal->UltimoCierreZ(), 3);

  line.answer({{"<STX>(8<FS>0600<FS>3080<FS>0<FS>1<FS>123<FS>0<FS>7<FS>45<ETX>0000"}});
  const auto numeric = z->GetStatusHASAR();
  EXPECT_EQ(numeric->statusPrinter, 0x0600);
  EXPECT_EQ(numeric->statusFiscal, 0x3080);
  EXPECT_EQ(numeric->numeroUltimaFactura, 123);
  EXPECT_EQ(numeric->numeroUltimoDNF, 45);

  for (int call = 0; call < 4; ++call)
    line.answer(
        {{"<STX><SEQ>8<FS>0600<FS>8000<FS>240315<FS>1405<FS>2<FS>3<FS>4<FS>5<FS>6<FS>7<FS>8<ETX>0000"}});
  EXPECT_EQ(z->GetStatusN(), nullptr);
  EXPECT_EQ(z->GetStatusHASAR(), nullptr);
  EXPECT_EQ(z->SerialImpresora(), u"");
  EXPECT_EQ(z->GetDateTime(), Date());
  EXPECT_EQ(element(2), "8000");
  EXPECT_EQ(z->StatusIF(u"N").int32() + z->CerrarComprobanteIGTF(u"T").int32(), 2) << "of 32 bits";
  line.answer({{"<STX><SEQ>8<FS>0600<FS>3080<FS>1<ETX>0000"}});
  EXPECT_EQ(errorOf([&] { z->GetStatusHASAR(); }), 9);
}

TEST_F(ReportsTest, AClosingIsHandedOutAsARecord) {
  EXPECT_EQ(z->GetResultadoCierre(), nullptr);
  const std::string figures =
      "<FS>1.00<FS>2.00<FS>3.00<FS>4.00<FS>5.00<FS>6.00<FS>7.00<FS>240315<FS>9.00<FS>10.00<FS>11.00<FS>12.00<"
      "FS>13.00<FS>14.00<FS>15.00<FS>16.00<FS>17.00<FS>3014311224<FS>1234";
  line.answer({{ok('"', '9', figures)}});
  const auto record = z->PerformReturnCierre(CIERRE_X);
  EXPECT_EQ(sent(), "9|X|P");
  EXPECT_EQ(record->numeroUltimaFactura, 1234);
  EXPECT_EQ(z->GetResultadoCierre()->ImpuestoNCBase3, record->ImpuestoNCBase3);
  line.answer({{ok('#', '9', "<FS>1.00")}});
  EXPECT_EQ(errorOf([&] { z->PerformReturnCierre(CIERRE_Z); }), 9);
  EXPECT_EQ(z->GetResultadoCierre(), nullptr);
  EXPECT_EQ(z->PerformReturnCierre(CIERRE_Z), nullptr);  // silence
}

}  // namespace zentaro::testing::reports_test
