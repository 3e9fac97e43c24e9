// What a host reads after a transaction: fields, status bits and the outcome text.
#include <gtest/gtest.h>

#include "support/printer_fixture.h"

namespace zentaro::testing::response_test {

using ResponseTest = PrinterTest;

TEST_F(ResponseTest, TheOutcomeTextHasFourLines) {
  EXPECT_EQ(z->EnvironmentError(), u"OK\r\n(PS:0000H, EF:0000H) \r\n.\r\nComando = 00H");
  struct Row {
    int outcome;
    const char16_t* text;
  };
  const Row rows[] = {
      {-1, u"ERROR EN DISPOSITIVO"}, {1, u"TIEMPO AGOTADO"},     {2, u"RESPUESTA INVALIDA"},
      {3, u"CHECKSUM  INVALIDA"},    {4, u"SECUENCIA INVALIDA"}, {5, u"PRINTER STATUS"},
      {6, u"ARGUMENTOS INVALIDOS"},  {9, u"envErrInvalido (9)"}, {-2, u"envErrInvalido (-2)"}};
  z->sLastError = u"VOID";
  z->dwordPrinterStatus = 0x8000;
  z->dwordStatusFiscal = 0x1ABCD;
  z->nLastCommand = 56;
  for (const Row& row : rows) {
    z->nEnvironmentError = static_cast<ENVERR_CODES>(row.outcome);
    EXPECT_EQ(z->EnvironmentError(),
              std::u16string(row.text) + u"\r\n(PS:8000H, EF:1ABCDH) \r\nVOID.\r\nComando = 38H");
  }
}

TEST_F(ResponseTest, ABitIsGivenByItsValue) {
  z->dwordPrinterStatus = 0x8005;
  z->dwordStatusFiscal = 0x0002;
  struct Row {
    Variant bit;
    int printer, fiscal;
  };
  const Row rows[] = {{15, 32768, 0}, {0, 1, 0},   {1, 0, 2},   {u"2", 4, 0},
                      {2.5, 4, 0},    {0.5, 1, 0}, {-0.4, 1, 0}};
  for (const Row& row : rows) {
    EXPECT_EQ(z->BitPrinter(row.bit), row.printer);
    EXPECT_EQ(z->BitFiscal(row.bit), row.fiscal);
  }
  EXPECT_EQ(z->nEnvironmentError, 0);
  for (const Variant& bit : {Variant(16), Variant(-1), Variant(1e300), Variant(15.5)}) {
    z->nEnvironmentError = ENVERR_OK;
    EXPECT_EQ(z->BitFiscal(bit), -1);
    EXPECT_EQ(z->nEnvironmentError, 6);
  }
  EXPECT_EQ(z->dwordPrinterStatus, 0x8005);
  EXPECT_EQ(errorOf([&] { z->BitPrinter(u"x"); }), 13);
}

TEST_F(ResponseTest, FieldsAreReadByIndex) {
  EXPECT_EQ(errorOf([&] { z->response(Variant::null()); }), 13);
  EXPECT_EQ(z->MaxResponse(), -1);
  EXPECT_TRUE(z->getResponse(1).is(Variant::Kind::Empty));

  line.answer({{"<STX>\"H<FS>0600<FS>3080<FS>a<FS>b<FS>c<ETX>0238"}});
  z->ExecuteCMD(72);
  EXPECT_EQ(z->response(0).int16(), 72);
  EXPECT_EQ(element(1) + element(2) + element(3) + element(4) + element(5) + element(6), "06003080abc0238");
  EXPECT_EQ(z->response(4.5).text() + z->response(u"4.6").text(), u"bc");
  EXPECT_EQ(z->response(7).int16(), -1);
  EXPECT_EQ(z->response(-1).int16(), -1);
  EXPECT_EQ(z->response(1e12).int16(), -1);
  EXPECT_EQ(z->MaxResponse(), -1);
  EXPECT_EQ(z->getVarParms(u"unused").array().upperBound(), 6);

  z->ExecuteCMD(72);
  EXPECT_TRUE(z->response(0).is(Variant::Kind::Empty));
  EXPECT_EQ(z->response(1).int16(), -1);
  EXPECT_EQ(z->MaxResponse(), 0);
}

}  // namespace zentaro::testing::response_test
