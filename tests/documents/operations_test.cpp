// The operations of fiscal and non-fiscal documents: the frame that each sends, and what each refuses.
#include "support/operations.h"

#include <gtest/gtest.h>

namespace zentaro::testing {
namespace {

using DocumentsTest = PrinterTest;

const Date may17 = dateOf({2023, 5, 17, 0, 0, 0});
const Date halfPastTwo{(14 * 3600 + 30 * 60 + 5) / 86400.0};

TEST_F(DocumentsTest, EachOperationSendsItsFieldsInOrder) {
  checkOperations(
      *z, line,
      {
          {"invoice", [](auto& p) { return p.IniciarFactura(); }, "@|~|~|~|~|~|~|~|~|~"},
          {"invoice with customer", [](auto& p) { return p.IniciarFactura(u" José ", u"J-12345678901234"); },
           "@|Jose|J-123456789012|~|~|~|~|~|~|~"},
          {"long name", [](auto& p) { return p.IniciarFactura(std::u16string(39, u'n') + u" x"); },
           "@|" + std::string(39, 'n') + "|~|~|~|~|~|~|~|~"},
          {"credit note",
           [](auto& p) {
             return p.IniciarDevolucion(u"Juan", u"J123456789", 1234, u"Z1A2", may17, halfPastTwo);
           },
           "@|Juan|J123456789|1234|Z1A2|230517|143005|D|~|~"},
          {"credit note without anything", [](auto& p) { return p.IniciarDevolucion(); },
           "@|~|~|0|~|~|~|D|~|~"},
          {"credit note, dates as texts",
           [](auto& p) { return p.IniciarDevolucion(u"", u"", u"ñ 7", 5, u"2023-05-17 14:30", u"14:30:05"); },
           "@|~|~|\xF1 7|5|230517|143005|D|~|~"},
          {"credit note at midnight, Empty date",
           [](auto& p) { return p.IniciarDevolucion(u"", u"", 1, u"", Variant(), Date{0}); },
           "@|~|~|1|~|~|~|D|~|~"},
          {"item", [](auto& p) { return p.PasarLineaFactura("Café", 12.5, 2, 16); },
           "B|Cafe|2000|1250|1600|M"},
          {"item in capitals", [](auto& p) { return p.PasarLineaFactura("CAFÉ", u"12.5", 0.5, 0); },
           "B|CAF.|500|1250|0|M"},
          {"return", [](auto& p) { return p.PasarLineaDevolucion("Café", 12.5, 2, 16); },
           "B|Cafe|2000|1250|1600|m"},
          {"extra line", [](auto& p) { return p.PasarLineaExtra(u"gracias"); }, "A|gracias|S"},
          {"subtotal", [](auto& p) { return p.Subtotal(); }, "C|~|~"},
          {"payment", [](auto& p) { return p.RecibirPago(100); }, "D|~|10000|T"},
          {"payment by medium", [](auto& p) { return p.PagoConMedio(3, 25.5); }, "D|3|2550|T"},
          {"medium as it is", [](auto& p) { return p.PagoConMedio(u" Pago Móvil ", 150.75); },
           "D| Pago M\xF3vil |15075|T"},
          {"discount", [](auto& p) { return p.RegistrarDescuento(5); }, "D|~|500|D"},
          {"discount with text",
           [](auto& p) { return p.RegistrarDescuentoExt(5, u" \"Día\" del cliente fiel"); },
           "D| \"D\xED"
           "a\" del cliente f|500|D"},
          {"cancel", [](auto& p) { return p.CancelarComprobante(); }, "D|~|0|C"},
          {"close", [](auto& p) { return p.CerrarComprobante(); }, "E|T"},
          {"close as given", [](auto& p) { return p.CerrarComprobante(u"t"); }, "E|t"},
          {"close without type", [](auto& p) { return p.CerrarComprobante(u""); }, "E"},
          {"close with Empty", [](auto& p) { return p.CerrarComprobante(Variant()); }, "E"},
          {"non-fiscal open", [](auto& p) { return p.AbrirDNF(); }, "H"},
          {"non-fiscal line", [](auto& p) { return p.PasarLineaDNF(std::u16string(50, u'd')); },
           "I|" + std::string(40, 'd')},
          {"non-fiscal blank line", [](auto& p) { return p.PasarLineaDNF(u"  "); }, "I|~"},
          {"non-fiscal close", [](auto& p) { return p.CerrarDNF(); }, "J"},
          {"header", [](auto& p) { return p.SetTextoFormato(true, 1, u"Gracias por su compra"); },
           "]|1|Gracias por su compra"},
          {"footer", [](auto& p) { return p.SetTextoFormato(0, u"5", u"é"); }, "^|5|e"},
          {"line with a fraction", [](auto& p) { return p.SetTextoFormato(-1, 2.5, u"x"); }, "]|2.5|x"},
          {"line 0", [](auto& p) { return p.SetTextoFormato(true, 0, Variant::null()); }, "nothing", 6},
          {"line 6", [](auto& p) { return p.SetTextoFormato(u"x", 6, u"x"); }, "nothing", 6},
          {"line that is no number", [](auto& p) { return p.SetTextoFormato(true, u"one", u"x"); }, "nothing",
           6},
      });
}

TEST_F(DocumentsTest, TheBaseDecidesTheCloseType) {
  struct Row {
    const char16_t* type;
    Variant base;
    const char* expected;
    const char16_t* after;
  };
  const Row rows[] = {{u"T", 0, "E|T|0", u"T"},       {u"T", 12.5, "E|U|1250", u"U"},
                      {u"A", 12.5, "E|B|1250", u"B"}, {u"U", 0, "E|T|0", u"T"},
                      {u"B", 0, "E|A|0", u"A"},       {u"U", 12.5, "E|U|1250", u"U"},
                      {u"E", 12.5, "E|E|1250", u"E"}, {u"t", 12.5, "E|t|1250", u"t"},
                      {u"", 12.5, "E|~|1250", u""},   {u"U", Variant::missing(), "E|T|0", u"T"},
                      {u"T", -0.001, "E|U|0", u"U"},  {u"B", u"7,500.5", "E|B|750050", u"B"}};
  for (const Row& row : rows) {
    Variant type = row.type;
    EXPECT_EQ(z->CerrarComprobanteIGTF(type, row.base).int32(), 1);
    EXPECT_EQ(sent(), row.expected);
    EXPECT_EQ(type.text(), row.after) << row.expected;
  }
  Variant type = u"T";
  EXPECT_EQ(raised([&] { z->CerrarComprobanteIGTF(type, u"x"); }), 13);
  EXPECT_EQ(type.text(), u"T");
}

TEST_F(DocumentsTest, AValueThatDoesNotConvertIsRefused) {
  const Variant null = Variant::null();
  checkRejections(
      *z, line,
      {
          {"Null name", [&](auto& p) { p.IniciarFactura(null); }, 94},
          {"date that is none", [](auto& p) { p.IniciarDevolucion(u"", u"", 0, u"", u"31/02/2024"); }, 13},
          {"Null number", [&](auto& p) { p.IniciarDevolucion(u"", u"", null); }, 94, true},
          {"price that is none", [](auto& p) { p.PasarLineaFactura(u"x", u"12.5x", 1, 16); }, 13},
          {"Null quantity", [&](auto& p) { p.PasarLineaFactura(u"x", 1, null, 16); }, 94},
          {"amount too large", [](auto& p) { p.RecibirPago(1e308); }, 6},
          {"omitted amount", [](auto& p) { p.RecibirPago(Variant::missing()); }, 13},
          {"Null medium", [&](auto& p) { p.PagoConMedio(null, 1); }, 94, true},
          {"Null medium and bad amount", [&](auto& p) { p.PagoConMedio(null, u"x"); }, 13},
          {"Null discount text", [&](auto& p) { p.RegistrarDescuentoExt(1, null); }, 94, true},
          {"Null close type", [&](auto& p) { p.CerrarComprobante(null); }, 94, true},
          {"Null close type with a base", [&](auto& p) { p.CerrarComprobanteIGTF(null, 1); }, 94, true},
          {"Null line", [&](auto& p) { p.PasarLineaDNF(null); }, 94},
          {"Null header", [&](auto& p) { p.SetTextoFormato(true, 1, null); }, 94},
          {"header flag that is none", [](auto& p) { p.SetTextoFormato(u"maybe", 1, u"x"); }, 13},
      });
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

}  // namespace
}  // namespace zentaro::testing
