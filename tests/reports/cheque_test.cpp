// Cheques: three exchanges in a row, and what they leave in the object.
#include <gtest/gtest.h>

#include "support/printer_fixture.h"

namespace zentaro::testing::cheque_test {

class ChequeTest : public PrinterTest {
 protected:
  std::string allSent() const {
    std::string text;
    for (const std::string& frame : line.written) text += shown(frame) + " / ";
    return text;
  }
  const Date day = dateOf({2024, 3, 15, 0, 0, 0});
  int fill() { return z->LlenarCheque(1500, u"JOSÉ  PEREZ", day); }
};

TEST_F(ChequeTest, ThreeFramesAndTheOutcomeOfTheLast) {
  line.answer({{ok('"', ' ')}});
  line.answer({{"<STX>#x<FS>8000<FS>3080<FS>ERROR 9 X<ETX>0000"}});
  line.answer({{ok('$', '!')}});
  EXPECT_EQ(fill(), 0);
  EXPECT_EQ(allSent(), "<A0> / <AA>|1,500.00|JOS.  PEREZ|15/03/2024 / <A1> / ");
  EXPECT_EQ(element(3), "ERROR 9 X");
  EXPECT_EQ(z->dwordPrinterStatus, 0x0600);
  EXPECT_EQ(z->nLastCommand, 161);
  EXPECT_EQ(z->sLastError, u"VOID");
}

TEST_F(ChequeTest, TheSlipStationIsSwitchedOffAfterAnyCheque) {
  line.answer({{ok('"', ' ')}});
  EXPECT_EQ(z->EndosarCheque(std::u16string(50, u'n'), std::u16string(21, u'v'), std::u16string(25, u'5')),
            1);
  EXPECT_EQ(allSent(), "<A0> / <AB>|" + std::string(40, 'n') + "|" + std::string(20, 'v') + "|" +
                           std::string(20, '5') + " / <A1> / ");
  EXPECT_TRUE(z->response(0).is(Variant::Kind::Empty));
}

TEST_F(ChequeTest, AStationThatStaysOffEndsIt) {
  line.answer({{"<STX>\"x<FS>0000<FS>8000<ETX>0000"}});
  EXPECT_EQ(fill(), 5);
  EXPECT_EQ(allSent(), "<A0> / ");
  line.answer({{"<STX>#x<FS>0000<FS>8000<ETX>0000"}});
  EXPECT_EQ(z->EndosarCheque(u"A", u"1", u"2"), 5);
  EXPECT_EQ(allSent(), "<A0> / <A0> / ");
}

TEST_F(ChequeTest, BadAmountsAndDatesAreRejectedBeforeTheStationIsOn) {
  EXPECT_EQ(errorOf([&] { z->LlenarCheque(u"x", u"A", day); }), 13);
  EXPECT_EQ(errorOf([&] { z->LlenarCheque(Variant::null(), u"A", day); }), 13);
  EXPECT_EQ(errorOf([&] { z->LlenarCheque(u"1E999", u"A", day); }), 13);
  EXPECT_EQ(errorOf([&] { z->LlenarCheque(1, u"A", u"31/02/2024"); }), 13);
  EXPECT_EQ(errorOf([&] { z->LlenarCheque(1, u"A", Variant()); }), 13);
  EXPECT_EQ(allSent(), "");
  line.answer({{ok('"', ' ')}});
  EXPECT_EQ(errorOf([&] { z->LlenarCheque(1, Variant::null(), day); }), 94);
  line.answer({{ok('#', ' ')}});
  EXPECT_EQ(errorOf([&] { z->EndosarCheque(u"A", u"1", Array{1}); }), 13);
  EXPECT_EQ(allSent(), "<A0> / <A0> / ") << "the station stays on";
}

TEST_F(ChequeTest, AmountsAndDatesAreReadAndWrittenInTheRegionalForm) {
  platform.regional.settings = {u',', u'.', u"d-m-yy"};
  line.answer({{ok('"', ' ')}});
  z->LlenarCheque(u"1.234.567,5", u"A", u"5.3.2024");
  EXPECT_EQ(shown(line.written[1]), "<AA>|1.234.567,50|A|5-3-24");
  z->SetDateTime(u"15.03.2024");
  EXPECT_EQ(sent(), "X|240315|000000");
  z->ReporteMemoriaPorFecha(u"1.3.2024", u"45366");
  EXPECT_EQ(sent(), ":|240301|240315|R");
  z->IniciarDevolucion(u"", u"", 1, u"", u"1.3.2024");
  EXPECT_EQ(sent(), "@|~|~|1|~|240301|~|D|~|~");
  struct Row {
    Regional settings;
    const char* sent;
  };
  for (const Row& row :
       {Row{{u',', u'\u202F', u"d-m-yy"}, "<AA>|922\u00A0337\u00A0203\u00A0685\u00A0477,58|A|5-3-24"},
        {{u'.', u'\u2019', u"dd/mm/yyyy"}, "<AA>|922\u2019337\u2019203\u2019685\u2019477.58|A|05/03/2024"},
        {{u'.', u',', u"yyyy\u5E74mm\u6708dd\u65E5"},
         "<AA>|922,337,203,685,477.58|A|2024\u00A003\u00A005\u00A0"}}) {
    platform.regional.settings = row.settings;
    renew();
    line.answer({{ok('"', ' ')}});
    z->LlenarCheque(Currency::fromScaled(9223372036854775807), u"A", u"2024-03-05");
    EXPECT_EQ(shown(line.written[1]), row.sent) << "what the code page lacks is a blank";
  }
}

}  // namespace zentaro::testing::cheque_test
