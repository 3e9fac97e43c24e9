// Loading the records: order, conversions, and what a failing element leaves loaded.
#include <gtest/gtest.h>

#include "reports/resultado_cierre.h"
#include "reports/status_hasar.h"
#include "reports/status_n.h"
#include "support/printer_fixture.h"

namespace zentaro::testing::record_test {

using RecordTest = PrinterTest;

// The answer fields of a closing; element k + 2 belongs to the k-th property.
std::vector<Variant> closing() {
  return {57,       u"0600",  u"3080",   u" 3.0 0,5x", u"4.00",       u"5.00",  u"6.00",  u"7.00",
          u"8.00",  u"9.00",  u"240315", u"11.00",     u"12.00",      u"13.00", u"14.00", u"15.00",
          u"16.00", u"17.00", u"18.00",  u"19.00",     u"3014311224", u"21"};
}

TEST_F(RecordTest, EachFigureOfAClosingHasItsElement) {
  ResultadoCierre r;
  r.LoadFromParams(Array(closing()));
  const Currency amounts[] = {r.VentasExentas,      r.BaseGravable1, r.Impuesto1,   r.ValorDescuentos,
                              r.ImpuestoDescuentos, r.MontoExentoNC, r.ValorNCBase1};
  int element = 3;
  for (const Currency amount : amounts) EXPECT_EQ(amount.toDouble(), element++);
  element = 11;
  for (const Currency amount : {r.BaseGravable2, r.Impuesto2, r.BaseGravable3, r.Impuesto3, r.ImpuestoNCBase1,
                                r.ValorNCBase2, r.ImpuestoNCBase2, r.ValorNCBase3, r.ImpuestoNCBase3}) {
    EXPECT_EQ(amount.toDouble(), element++);
  }
  EXPECT_EQ(isoText(r.FechaReporte), "2024-03-15T00:00:00");
  EXPECT_EQ(isoText(r.FechaUltimaFactura), "2024-12-31T14:30:00");
  EXPECT_EQ(r.numeroUltimaFactura, 21);
}

TEST_F(RecordTest, AmountsAreReadExactly) {
  for (const auto& [text, scaled] :
       {std::pair{u"760481341013.82", 7604813410138200}, {u"922337203685477.58", 9223372036854775800}}) {
    std::vector<Variant> entries = closing();
    entries[3] = text;
    ResultadoCierre record;
    record.LoadFromParams(Array(entries));
    EXPECT_EQ(record.VentasExentas.scaled(), scaled) << utf8(text);
  }
}

TEST_F(RecordTest, AFailingElementLeavesWhatWasLoadedBefore) {
  struct Row {
    const char* name;
    std::size_t element;
    Variant value;
    int error;
    double lastAmount;  // of element 19
  };
  const Row rows[] = {
      {"no date", 10, u"24", 13, 0},           {"a day too short", 10, u"2411", 13, 0},
      {"month 13", 10, u"241301", 13, 0},      {"no time", 20, u"30143112", 13, 19},
      {"short of two", 20, u"301431", 13, 19}, {"hour 25", 20, u"3025311224", 13, 19},
      {"no number", 21, u"01B0", 13, 19},      {"number too large", 21, u"2147483648", 6, 19},
      {"Null", 3, Variant::null(), 94, 0},     {"amount too large", 4, u"1000000000000000", 6, 0}};
  for (const Row& row : rows) {
    std::vector<Variant> entries = closing();
    entries[row.element] = row.value;
    ResultadoCierre record;
    EXPECT_EQ(errorOf([&] { record.LoadFromParams(Array(entries)); }), row.error) << row.name;
    EXPECT_EQ(record.ImpuestoNCBase3.toDouble(), row.lastAmount) << row.name;
  }
  std::vector<Variant> entries = closing();
  entries.pop_back();
  ResultadoCierre record;
  EXPECT_EQ(errorOf([&] { record.LoadFromParams(Array(entries)); }), 9);
  EXPECT_EQ(isoText(record.FechaUltimaFactura), "2024-12-31T14:30:00");
  EXPECT_EQ(errorOf([&] { record.LoadFromParams(u"no array"); }), 13);
}

TEST_F(RecordTest, StatusNumbersAreReadAsTheirFieldSays) {
  statusHASAR record;
  record.LoadFromResponse(Array{u"000008000", u"FFFF", u"0600", u"C080", u"", u" 1 2.5x", u"3.5", u"-4"});
  EXPECT_EQ(record.statusPrinter, -32768);
  EXPECT_EQ(record.statusFiscal, -1);
  EXPECT_EQ(record.statusAuxiliar, 600);
  EXPECT_EQ(record.statusDocumento, 0);
  EXPECT_EQ(record.numeroUltimaFactura, 0);
  EXPECT_EQ(record.numeroUltimaND, 12);
  EXPECT_EQ(record.numeroUltimaNC, 4);
  EXPECT_EQ(record.numeroUltimoDNF, -4);
  EXPECT_EQ(errorOf([&] { record.LoadFromResponse(Array{u"12345", u"xyz", u"2147483648"}); }), 6);
  EXPECT_EQ(record.statusPrinter, 0x12345);
  EXPECT_EQ(record.statusFiscal, 0);
  EXPECT_EQ(errorOf([&] { record.LoadFromResponse(Array{u"1"}); }), 9);

  statusN normal;
  EXPECT_EQ(errorOf([&] { normal.LoadFromResponse(Array{0, 1, 2, 3, u"new"}); }), 9);
  EXPECT_EQ(normal.CodigoStatus, u"new");
  EXPECT_EQ(errorOf([&] { (void)normal.FechaImpresora(); }), 13);
}

}  // namespace zentaro::testing::record_test
