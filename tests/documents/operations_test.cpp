// The operations of fiscal and non-fiscal documents: the frame that each sends, and what each refuses.
#include "support/operations.h"

namespace zentaro::testing::documents_test {

using DocumentsTest = OperationTest;

TEST_F(DocumentsTest, EachOperationSendsItsFieldsOrRefusesThem) {
  check(R"(
    IniciarFactura => @|~|~|~|~|~|~|~|~|~
    IniciarFactura ' José ' 'J-12345678901234' => @|Jose|J-123456789012|~|~|~|~|~|~|~
    IniciarFactura '123456789012345678901234567890123456789 x' => @|123456789012345678901234567890123456789|~|~|~|~|~|~|~|~
    IniciarFactura null => raises 94

    IniciarDevolucion 'Juan' 'J123456789' 1234 'Z1A2' 2023-05-17 1899-12-30T14:30:05 => @|Juan|J123456789|1234|Z1A2|230517|143005|D|~|~
    IniciarDevolucion => @|~|~|0|~|~|~|D|~|~
    IniciarDevolucion '' '' 1 ' 12345678901234567890123456789012345678901234567890 ' 1999-12-31 => @|~|~|1| 12345678901234567890123456789012345678901234567890 |991231|~|D|~|~
    IniciarDevolucion '' '' 'ñ 7' 5 '2023-05-17 14:30' '14:30:05' => @|~|~|ñ 7|5|230517|143005|D|~|~
    IniciarDevolucion '' '' 1 '' empty 1899-12-30 => @|~|~|1|~|~|~|D|~|~
    IniciarDevolucion '' '' 1 '' '0' '0' => @|~|~|1|~|~|~|D|~|~
    - the date comes before the names
    IniciarDevolucion null '' 0 '' '31/02/2024' => raises 13
    IniciarDevolucion '' '' null => raises 94 late

    PasarLineaFactura 'Café' 12.5 2 16 => B|Cafe|2000|1250|1600|M
    PasarLineaFactura 'CAFÉ' '12.5' 0.5 0 => B|CAF.|500|1250|0|M
    PasarLineaFactura 'x' '12.5x' 1 16 => raises 13
    PasarLineaFactura 'x' 1 null 16 => raises 94
    - the description comes before the price
    PasarLineaFactura null 'x' 1 16 => raises 94
    PasarLineaDevolucion 'Café' 12.5 2 16 => B|Cafe|2000|1250|1600|m
    PasarLineaExtra 'gracias' => A|gracias|S
    Subtotal => C|~|~

    RecibirPago 100 => D|~|10000|T
    RecibirPago 1e308 => raises 6
    RecibirPago missing => raises 13
    PagoConMedio 3 25.5 => D|3|2550|T
    PagoConMedio ' Pago Móvil ' 150.75 => D| Pago Móvil |15075|T
    PagoConMedio '12345678901234567890123456789012345678901234567890' 1 => D|12345678901234567890123456789012345678901234567890|100|T
    PagoConMedio null 1 => raises 94 late
    PagoConMedio null 'x' => raises 13
    RegistrarDescuento 5 => D|~|500|D
    RegistrarDescuentoExt 5 ' "Día" del cliente fiel' => D| "Día" del cliente f|500|D
    RegistrarDescuentoExt 1 null => raises 94 late
    RegistrarDescuentoExt 1 missing => raises 13 late
    CancelarComprobante => D|~|0|C

    CerrarComprobante => E|T
    CerrarComprobante 't' => E|t
    CerrarComprobante '' => E
    CerrarComprobante empty => E
    CerrarComprobante null => raises 94 late
    CerrarComprobanteIGTF null 1 => raises 94 late

    AbrirDNF => H
    PasarLineaDNF '12345678901234567890123456789012345678901234567890' => I|1234567890123456789012345678901234567890
    PasarLineaDNF '  ' => I|~
    PasarLineaDNF null => raises 94
    CerrarDNF => J

    SetTextoFormato true 1 'Gracias por su compra' => ]|1|Gracias por su compra
    SetTextoFormato 0 ' 5 ' 'é' => ^|5|e
    SetTextoFormato 'True' 2.5 'x' => ]|2.5|x
    SetTextoFormato true 0.5 null => returns 6
    SetTextoFormato 'x' 5.5 'x' => returns 6
    SetTextoFormato true 'one' 'x' => returns 6
    SetTextoFormato true 1 null => raises 94
    SetTextoFormato 'maybe' 1 'x' => raises 13)");
}

TEST_F(DocumentsTest, TheBaseDecidesTheCloseType) {
  const struct {
    const char *type, *base, *sent, *after;
  } rows[] = {{"'T'", "0", "E|T|0", "T"},        {"'T'", "12.5", "E|U|1250", "U"},
              {"'A'", "12.5", "E|B|1250", "B"},  {"'U'", "0", "E|T|0", "T"},
              {"'B'", "0", "E|A|0", "A"},        {"'U'", "12.5", "E|U|1250", "U"},
              {"'E'", "12.5", "E|E|1250", "E"},  {"'t'", "12.5", "E|t|1250", "t"},
              {"''", "12.5", "E|~|1250", ""},    {"'U'", "missing", "E|T|0", "T"},
              {"'T'", "-0.001", "E|U|0", "U"},   {"'B'", "'7,500.5'", "E|B|750050", "B"},
              {"'T'", "'x'", "raises 13", "T"},  {"'T'", "null", "raises 94", "T"},
              {"'T'", "1e308", "raises 6", "U"}, {"missing", "1", "E|U|100", "(number)"}};
  for (const auto& row : rows) {
    std::array<Variant, 2> arguments{argument(row.type), argument(row.base)};
    line.written.clear();
    const int error = errorOf([&] { call("CerrarComprobanteIGTF", arguments); });
    EXPECT_EQ(error == 0 ? sent() : "raises " + std::to_string(error), row.sent) << row.type << row.base;
    EXPECT_EQ(shownValue(arguments[0]), row.after) << row.sent;
  }
}

TEST_F(DocumentsTest, ASaleAnswersWithTheOutcomeOfEachStep) {
  line.answer({{ok('"', '@', "<FS>00000001")}});
  EXPECT_EQ(z->IniciarFactura(u"Ana", u"V1"), 0);
  EXPECT_EQ(element(3), "00000001");
  line.answer({{"<STX>#B<FS>0600<FS>8000<FS>ERROR 07 SIN PAPEL<ETX>0000"}});
  EXPECT_EQ(z->PasarLineaFactura(u"Pan", 1, 1, 16), 5);
  EXPECT_EQ(z->sLastError, u"ERROR 07 SIN PAPEL");
  EXPECT_EQ(z->BitFiscal(15), 32768);
}

}  // namespace zentaro::testing::documents_test
