// What somebody sees who reads the first two words of a verdict, in both languages.
#include "till/words/verdict_words.h"

#include <gtest/gtest.h>

#include "base/files/json.h"
#include "base/terminal/language.h"
#include "till/course/figures.h"
#include "till/words/call_words.h"
#include "till/words/closing_words.h"

namespace zentaro::till::verdict_words_test {

using terminal::Language;

struct Words {
  Ending ending;
  std::string spanish, english;
};

// In the language of the program, which is set back at the end.
template <class Text>
std::string in(Language language, const Text& text) {
  const Language before = terminal::language();
  terminal::chooseLanguage(language);
  std::string said = text();
  terminal::chooseLanguage(before);
  return said;
}

std::string beginning(const std::string& text, const std::string& like) {
  return text.substr(0, like.size());
}

TEST(VerdictWords, BeginWithTheTruth) {
  const Words rows[] = {
      {Ending::Printed, "IMPRESO. El documento está cerrado", "PRINTED. The document is closed"},
      {Ending::PrintedInPart, "IMPRESO, pero pueden faltar", "PRINTED, but extra lines"},
      {Ending::NotPrinted, "NO IMPRESO. ", "NOT PRINTED. "},
      {Ending::Unknown, "NO SE SABE. ", "UNKNOWN. "},
      {Ending::StillOpen, "SIGUE ABIERTO. ", "STILL OPEN. "},
      {Ending::StillToBeClosed, "SIGUE ABIERTO. ", "STILL OPEN. "},
      {Ending::OpenBefore, "NO IMPRESO. ", "NOT PRINTED. "},
      {Ending::Unreachable, "NO IMPRESO. ", "NOT PRINTED. "},
      {Ending::AlreadyPrinted, "YA IMPRESO. La venta \"F-1\"", "ALREADY PRINTED. The sale \"F-1\""},
      {Ending::PrintedBefore, "YA ESTABA IMPRESA como 00000009", "ALREADY PRINTED as 00000009"},
      {Ending::UnknownBefore, "NO SE SABE qué fue", "UNKNOWN what became"},
      {Ending::OtherContent, "NO IMPRESO. El id \"F-1\"", "NOT PRINTED. The id \"F-1\""},
      {Ending::Busy, "EN CURSO. La venta \"F-1\"", "UNDER WAY. The sale \"F-1\""},
  };
  for (const Words& row : rows) {
    Verdict verdict;
    verdict.ending = row.ending;
    verdict.job.emplace();
    verdict.job->id = "F-1";
    verdict.job->number = 9;
    const auto text = [&] { return verdictText(verdict, {"--port 1"}); };
    EXPECT_EQ(beginning(in(Language::Spanish, text), row.spanish), row.spanish) << nameOf(row.ending);
    EXPECT_EQ(beginning(in(Language::English, text), row.english), row.english) << nameOf(row.ending);
  }
}

TEST(VerdictWords, OfAClosingBeginWithTheTruth) {
  const Words rows[] = {
      {Ending::Printed, "Z 00000012 IMPRESO, ventas 44.05, IVA 5.44, devoluciones 1.16.",
       "Z 00000012 PRINTED, sales 44.05, tax 5.44, returns 1.16."},
      {Ending::NotPrinted, "Z NO IMPRESO. El día sigue abierto.", "Z NOT PRINTED. The day is still open."},
      {Ending::Unknown, "Z EN DUDA. ", "Z UNKNOWN. "},
      {Ending::Unreachable, "Z NO IMPRESO. ", "Z NOT PRINTED. "},
      {Ending::UnknownBefore, "Z NO IMPRESO. ", "Z NOT PRINTED. "},
      {Ending::AlreadyPrinted, "Z YA IMPRESO como 00000012", "Z ALREADY PRINTED as 00000012"},
      {Ending::PrintedBefore, "Z YA IMPRESO como 00000012", "Z ALREADY PRINTED as 00000012"},
      {Ending::OtherContent, "Z NO IMPRESO. ", "Z NOT PRINTED. "},
      {Ending::Busy, "Z NO IMPRESO. ", "Z NOT PRINTED. "},
  };
  for (const Words& row : rows) {
    ClosingVerdict verdict;
    verdict.ending = row.ending;
    verdict.number = 12;
    ResultadoCierre& figures = verdict.figures.emplace();
    figures.VentasExentas = Currency::fromScaled(46100);  // 4.61
    figures.BaseGravable2 = Currency::fromScaled(340000);
    figures.Impuesto2 = Currency::fromScaled(54400);
    figures.ValorNCBase1 = Currency::fromScaled(10000);
    figures.ImpuestoNCBase1 = Currency::fromScaled(1600);
    const auto text = [&] { return closingText(verdict, {"--port 1"}); };
    EXPECT_EQ(beginning(in(Language::Spanish, text), row.spanish), row.spanish) << nameOf(row.ending);
    EXPECT_EQ(beginning(in(Language::English, text), row.english), row.english) << nameOf(row.ending);
  }
}

TEST(VerdictWords, OfAClosingNameWhatEndsTheDocumentInTheWay) {
  ClosingVerdict verdict;
  verdict.kind = Kind::Z;
  verdict.ending = Ending::NotPrinted;
  for (const auto& [document, command] :
       std::initializer_list<std::pair<int, std::string>>{{1, "CancelarComprobante"},
                                                          {2, "CancelarComprobante"},
                                                          {3, "CerrarDNF"},
                                                          {4, "CerrarComprobante E"}}) {
    verdict.openDocument = document;
    EXPECT_TRUE(closingText(verdict, {"--port 1"}).ends_with("\n    zentaro call --port 1 " + command))
        << document;
  }
}

// Each figure under its own name.
TEST(VerdictWords, TellEachFigureAndEachJobInItsPlace) {
  ResultadoCierre f;
  std::int64_t next = 0;
  for (Currency* figure :
       {&f.VentasExentas, &f.BaseGravable1, &f.Impuesto1, &f.BaseGravable2, &f.Impuesto2, &f.BaseGravable3,
        &f.Impuesto3, &f.MontoExentoNC, &f.ValorNCBase1, &f.ImpuestoNCBase1, &f.ValorNCBase2,
        &f.ImpuestoNCBase2, &f.ValorNCBase3, &f.ImpuestoNCBase3, &f.ValorDescuentos, &f.ImpuestoDescuentos})
    *figure = Currency::fromScaled(++next * 10000);
  f.numeroUltimaFactura = 17;
  const auto group = [](int first) {
    Json made;
    for (const char* name : {"exempt", "base1", "tax1", "base2", "tax2", "base3", "tax3"})
      made[name] = std::to_string(first++) + ".00";
    return made;
  };
  EXPECT_EQ(figuresJson(f), Json({{"sales", group(1)},
                                  {"creditNotes", group(8)},
                                  {"discounts", "15.00"},
                                  {"discountTax", "16.00"},
                                  {"lastInvoice", 17}}));
  Settled settled;
  settled.judged.emplace_back().id = "J-1";
  settled.open.emplace_back().id = "O-1";
  settled.open.emplace_back().id = "O-2";
  const Json json = settledJson(settled);
  EXPECT_EQ(json["judged"].size(), 1U);
  EXPECT_EQ(json["open"][1]["id"], "O-2");
}

TEST(VerdictWords, TellTheCauseTheNumberAndWhatDiffers) {
  Verdict verdict;
  verdict.ending = Ending::Printed;
  verdict.totals.net = 10000;
  verdict.totals.tax = 1600;
  verdict.totals.paid = 12000;
  const auto text = [&] { return in(Language::English, [&] { return verdictText(verdict, {"--port 1"}); }); };
  EXPECT_NE(text().find("Number unknown (see the paper), total 116.00, change 4.00 (amounts computed)"),
            std::string::npos);
  verdict.receipt = {7, 11600, 300};
  verdict.number = 7;
  EXPECT_NE(
      text().find("Number 00000007, total 116.00, change 3.00. The printer differs from what was computed: "
                  "total 116.00, change 4.00"),
      std::string::npos)
      << text();
  verdict.ending = Ending::OpenBefore;
  verdict.cause = {Cause::Kind::Refused, "open: \x1b[1mx", {}};
  EXPECT_NE(text().find("zentaro call --port 1 CancelarComprobante\nCause: open: "), std::string::npos)
      << text();
  EXPECT_EQ(text().find('\x1b'), std::string::npos);
  const Json json = verdictJson(verdict, {"--port 1"});
  EXPECT_EQ(json["total"], nullptr) << "of a document that was not printed";
}

// The cashier is told the very command.
TEST(VerdictWords, SayWhatHelpsAgainstThisCause) {
  Verdict verdict;
  const auto next = [&] {
    return in(Language::English,
              [&] { return verdictJson(verdict, {"--port 1"})["next"].get<std::string>(); });
  };
  verdict.ending = Ending::NotPrinted;
  verdict.cause = {Cause::Kind::Refused, "open", "ERROR 23 SE REQUIERE CIERRE Z"};
  EXPECT_EQ(next(), "Close the day, then print the sale again:\n    zentaro cierre z --port 1");
  verdict.cause.printer = "ERROR 20 SIN PAPEL";
  EXPECT_EQ(next(), "Remove the cause, then print the sale again.");
  verdict.ending = Ending::StillOpen;
  EXPECT_EQ(next().find("--id"), std::string::npos) << "a sale without an id";
  verdict.job.emplace();
  verdict.job->id = "F-1";
  EXPECT_NE(next().find("Or the same command with --id F-1 will do"), std::string::npos) << next();
}

}  // namespace zentaro::till::verdict_words_test
