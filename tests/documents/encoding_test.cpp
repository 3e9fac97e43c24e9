// How the host's texts and amounts are encoded.
#include "documents/encoding.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/printer_fixture.h"

namespace zentaro::testing::encoding_test {

using EncodingTest = PrinterTest;

TEST_F(EncodingTest, TextsAreCutThenTrimmedThenReduced) {
  struct Row {
    Variant value;
    int length;
    const char16_t* expected;
  };
  const Row rows[] = {
      {u"  Año nuevo  ", 40, u"Ano nuevo"},
      {u"ÁRBOL \"óptimo\" Ñ", 40, u".RBOL 'optimo' N"},
      {u"áéíóúñ ÉÍÓÚÜü€°", 40, u"aeioun ........"},
      {u"   ABCDEF", 4, u"A"},
      {u"abcdefghijklmnopqrstuvwxyz", 0, u"abcdefghijklmnopqrst"},
      {u"\tabc\r\x7F ", 20, u"\tabc\r\x7F"},
      {u"   ", 20, u""},
      {u"a\U0001F600", 20, u"a.."},
      {12.5, 20, u"12.5"},
      {Date{45366}, 20, u"15/03/2024"},
      {Variant(), 20, u""},
  };
  for (const Row& row : rows) EXPECT_EQ(CleanText(row.value, row.length), row.expected);
  EXPECT_EQ(errorOf([] { CleanText(Variant::null(), 40); }), 94);
  EXPECT_EQ(errorOf([] { CleanText(u"x", -1); }), 5);
}

TEST_F(EncodingTest, AmountsHaveImpliedDecimalsRoundedHalfUp) {
  struct Row {
    double value;
    std::int16_t decimals;
    const char16_t* expected;
  };
  const Row rows[] = {{12.34, 2, u"1234"},
                      {16, 2, u"1600"},
                      {0, 2, u"0"},
                      {1.005, 2, u"100"},
                      {1.5, 3, u"1500"},
                      {0.3333, 3, u"333"},
                      {0.0005, 3, u"1"},
                      {12.5, 0, u"13"},
                      {13.5, 0, u"14"},
                      {-1.25, 1, u"-12"},
                      {-1.26, 1, u"-13"},
                      {-0.4, 0, u"0"},
                      {-0.0, 2, u"0"},
                      {1e15, 2, u"100000000000000000"},
                      {92233720368547758.08, 2, u"9223372036854775808"}};
  for (const Row& row : rows) EXPECT_EQ(FormatImplied(row.value, row.decimals), row.expected) << row.value;
  constexpr double infinity = std::numeric_limits<double>::infinity();
  for (const double value : {infinity, -infinity, std::numeric_limits<double>::quiet_NaN(), 1e308}) {
    EXPECT_EQ(errorOf([=] { FormatImplied(value, 2); }), 6) << value;
  }
  EXPECT_EQ(implied(Currency::fromScaled(123456), 2), u"1235");
  EXPECT_EQ(implied(1234567.875F, 2), u"123456788") << "a Single counts with all its digits";
}

TEST_F(EncodingTest, DescriptionsAreCutAsTheSettingSays) {
  const std::u16string letters(60, u'x');
  struct Row {
    const char16_t* setting;
    std::size_t item, extra;  // lengths
    int reads;
  };
  const Row rows[] = {{u"20", 20, 34, 1},   {u"30abc", 30, 44, 1}, {u"20.5", 20, 34, 1},
                      {u"21.5", 22, 36, 1}, {u"99999", 20, 34, 1}, {u"abc", 20, 14, 2},
                      {u"0", 20, 14, 2},    {u" 1 0", 10, 24, 1}};
  for (const Row& row : rows) {
    setting("LenDescripcionZT", row.setting);
    renew();
    platform.settings.reads.clear();
    z->PasarLineaFactura(letters, 1, 1, 16);
    EXPECT_EQ(sent(), "B|" + std::string(row.item, 'x') + "|1000|100|1600|M");
    z->PasarLineaExtra(letters);
    EXPECT_EQ(sent(), "A|" + std::string(row.extra, 'x') + "|S");
    const auto& reads = platform.settings.reads;
    EXPECT_EQ(std::count(reads.begin(), reads.end(), "LenDescripcionZT"), row.reads) << utf8(row.setting);
  }
  setting("LenDescripcionZT", u"-3");
  EXPECT_EQ(errorOf([&] { renew().PasarLineaFactura(u"x", 1, 1, 16); }), 5);
  setting("LenDescripcionZT", u"32760");
  EXPECT_EQ(errorOf([&] { renew().PasarLineaExtra(u"x"); }), 6);
  EXPECT_TRUE(line.written.empty());
}

TEST_F(EncodingTest, AFractionalQuantityIsFoldedIntoThePriceWhenTheSettingSays) {
  const Currency ten = Currency::fromScaled(100000), half = Currency::fromScaled(25000);
  const struct {
    const char16_t* setting;
    Variant price, quantity;
    const char* sent;
    double priceAfter, quantityAfter;
  } rows[] = {{u"1", 10, 2.5, "2500|1000", 25, 1},    {u"0.5", 10, 2.5, "1000|2500", 10, 2.5},
              {u"0.6", 10, 2.5, "2500|1000", 25, 1},  {u"99999", 10, 2.5, "1000|2500", 10, 2.5},
              {u"1", 10, -2.5, "-2500|1000", -25, 1}, {u"x", 10, 2.5, "1000|2500", 10, 2.5},
              {u"1", 10, 2, "1000|2000", 10, 2},      {u"-1", ten, 2.5, "2500|1000", 25, 1},
              {u"1", 10.0, half, "2500|1000", 25, 1}, {u"1", ten, half, "2500|1000", 25, 1},
              {u"1", 10.0F, 2.5F, "2500|1000", 25, 1}};
  for (const auto& row : rows) {
    setting("SuprimirDecimalesEZT", row.setting);
    renew();
    Variant price = row.price, quantity = row.quantity;
    z->PasarLineaFactura(u"Queso", price, quantity, 16);
    const std::vector<std::string> fields = split(sent(), '|');
    EXPECT_EQ(fields[3] + "|" + fields[2], row.sent) << utf8(row.setting);
    EXPECT_EQ(toDouble(price), row.priceAfter) << row.sent;
    EXPECT_EQ(toDouble(quantity), row.quantityAfter) << row.sent;
  }
  setting("SuprimirDecimalesEZT", u"0");
  renew().PasarLineaFactura(u"Queso", 10, 2.5, 16);
  setting("SuprimirDecimalesEZT", u"1");
  z->PasarLineaFactura(u"Queso", 10, 2.5, 16);
  EXPECT_EQ(sent(), "B|Queso|2500|1000|1600|M") << "decided at the first item";
}

TEST_F(EncodingTest, TheWriteBackStandsAlsoWhenALaterConversionFails) {
  setting("SuprimirDecimalesEZT", u"1");
  renew();
  Variant price = Currency::fromScaled(100001), quantity = Currency::fromScaled(25000);
  EXPECT_EQ(errorOf([&] { z->PasarLineaDevolucion(u"Queso", price, quantity, u"x"); }), 13);
  EXPECT_EQ(price.currency().scaled(), 250002) << "currency times currency stays currency, ties to even";
  EXPECT_EQ(quantity.int16(), 1);
  price = 10, quantity = 2.5;
  EXPECT_EQ(errorOf([&] { z->PasarLineaDevolucion(Variant::null(), price, quantity, 16); }), 94);
  EXPECT_EQ(toDouble(price), 25) << "folded before the description is looked at";
  price = Currency::fromScaled(-100001), quantity = Currency::fromScaled(26000);
  z->PasarLineaDevolucion(u"Queso", price, quantity, 16);
  EXPECT_EQ(price.currency().scaled(), -260003);
  z->PortOpen(false);
  line.written.clear();
  quantity = 2.5;
  EXPECT_EQ(z->PasarLineaFactura(u"Queso", price, quantity, 16), -1);
  EXPECT_EQ(quantity.number(), 2.5);
  EXPECT_TRUE(line.written.empty());
}

TEST_F(EncodingTest, AHostsTextForgesNeitherFieldNorFrame) {
  z->IniciarFactura(u"A\u0002B\u0003C\u001CD", u"J-1");
  EXPECT_EQ(sent(), "@|A.B.C.D|J-1|~|~|~|~|~|~|~");
  z->IniciarFactura(u"A\tB\r\n\u001B\u000C\u007F", u"\u0007");
  EXPECT_EQ(sent(), "@|A\tB\r\n\x1B\x0C~|\x07|~|~|~|~|~|~|~") << "all others pass";
  z->PagoConMedio(u"1\u001C9999", 2);
  EXPECT_EQ(sent(), "D|1.9999|200|T");
}

}  // namespace zentaro::testing::encoding_test
