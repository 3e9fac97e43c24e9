// What stands on paper, and the drawings of it.
#include "bench.h"
#include "virtual-printer/paper/svg.h"

namespace virtual_printer::paper_test {

using bench::Till;

using bench::occurrences;
TEST(Paper, AnInvoiceToTheLetter) {
  Till till;
  till.dialogue(R"(
    5E 1|GRACIAS POR SU COMPRA
    40 Juan Perez|V12345678|||||||
    42 Cafe molido|2000|1250|1600|M
    42 Queso|525|99900|0|M
    41 lote 4711|S
    43 |
    44 Cliente fiel|500|D
    44 |30000|T
    44 2|31000|T
    45 U|20000)");
  EXPECT_EQ(till.paper(),
            "      PRUEBA - SIN VALIDEZ FISCAL\n"
            "                 SENIAT\n"
            "            RIF J-12345678-9\n"
            "            BODEGA LA PRUEBA\n"
            "\n"
            "RIF/C.I.: V12345678\n"
            "RAZON SOCIAL: Juan Perez\n"
            "                FACTURA\n"
            "FACTURA:                        00000001\n"
            "FECHA: 24-11-2026            HORA: 15:04\n"
            "----------------------------------------\n"
            "2 x Bs 12,50\n"
            "Cafe molido (G)                 Bs 25,00\n"
            "0,525 x Bs 999,00\n"
            "Queso (E)                      Bs 524,48\n"
            "lote 4711\n"
            "TOTAL PARCIAL                  Bs 553,48\n"
            "DESCUENTO Cliente fiel          Bs -5,00\n"
            "----------------------------------------\n"
            "SUBTOTAL                       Bs 544,48\n"
            "----------------------------------------\n"
            "EXENTO (E)                     Bs 519,71\n"
            "BI G (16,00%)                   Bs 24,77\n"
            "IVA G (16,00%)                   Bs 3,96\n"
            "----------------------------------------\n"
            "TOTAL                          Bs 548,44\n"
            "EFECTIVO                       Bs 300,00\n"
            "MEDIO DE PAGO 2                Bs 310,00\n"
            "BI IGTF (3,00%)                Bs 200,00\n"
            "IGTF (3,00%)                     Bs 6,00\n"
            "TOTAL CON IGTF                 Bs 554,44\n"
            "CAMBIO                          Bs 55,56\n"
            "\n"
            "         GRACIAS POR SU COMPRA\n"
            "\n"
            "             MH  ZPV0000007\n"
            "      PRUEBA - SIN VALIDEZ FISCAL\n"
            "- - - - - - - - - - - - - - - - - - - -\n");
}

// Heading and foot of every sheet of the roll stand around what each row shows.
std::string framed(const std::string& body) {
  const std::string mark = "      PRUEBA - SIN VALIDEZ FISCAL\n";
  return mark + "                 SENIAT\n            RIF J-12345678-9\n            BODEGA LA PRUEBA\n" +
         body + "\n             MH  ZPV0000007\n" + mark + "- - - - - - - - - - - - - - - - - - - -\n";
}

constexpr const char* busyDay =
    "40 ||||||||; 42 Cafe|2000|1250|1600|M; 42 Queso|525|999|0|M; 42 Pan|1000|999|800|M\n"
    "42 Lujo|1000|999|3100|M; 44 |500|D; 44 |6000|T; 45 U|2000\n"
    "40 ||||||D||; 42 Pan|1000|999|800|m; 45 T; 40 ||||||||; 44 |0|C; 48; 4A\n";

TEST(Paper, OtherDocumentsToTheLetter) {
  const std::string heading =
      "FECHA: 24-11-2026            HORA: 15:04\n"
      "----------------------------------------\n";
  const std::string sums =
      "VENTAS                          Bs 52,33\n"
      "IVA                              Bs 7,11\n"
      "IGTF                             Bs 0,60\n"
      "DEVOLUCIONES                    Bs 10,79\n";
  const struct {
    const char* what;
    std::string rows;
    std::string body;
  } rows[] = {
      {"a credit note that names no invoice",
       "40 Ana|V1|0||||D||; 42 Pan|1000|999|800|m; 42 Lujo|1050|100|3100|m; 45 T",
       "\nRIF/C.I.: V1\nRAZON SOCIAL: Ana\n            NOTA DE CREDITO\n"
       "NUMERO:                         00000001\n" +
           heading +
           "1 x Bs 9,99\nPan (R)                          Bs 9,99\n"
           "1,050 x Bs 1,00\nLujo (A)                         Bs 1,05\n"
           "----------------------------------------\n"
           "SUBTOTAL                        Bs 11,04\n"
           "----------------------------------------\n"
           "BI R (8,00%)                     Bs 9,99\nIVA R (8,00%)                    Bs 0,80\n"
           "BI A (31,00%)                    Bs 1,05\nIVA A (31,00%)                   Bs 0,33\n"
           "----------------------------------------\n"
           "TOTAL                           Bs 12,17\n\n"},
      {"a non-fiscal document", "5D 2|CALLE REAL; 48; 49 HOLA; 4A",
       "               CALLE REAL\n\n          DOCUMENTO NO FISCAL\n"
       "NUMERO:                         00000001\n" +
           heading + "HOLA\n               NO FISCAL\n"},
      {"a cancelled invoice", "40 |V1|||||||; 42 Pan|1000|999|800|M; 44 |0|C",
       "\nRIF/C.I.: V1\n                FACTURA\nFACTURA:                        00000001\n" + heading +
           "1 x Bs 9,99\nPan (R)                          Bs 9,99\n           DOCUMENTO ANULADO\n"},
      {"an X", std::string{busyDay} + "39 X|P",
       "\n               REPORTE X\n" + heading +
           "VENTAS\nEXENTO (E)                       Bs 4,72\n"
           "BI G (16,00%)                   Bs 22,51\nIVA G (16,00%)                   Bs 3,60\n"
           "BI R (8,00%)                     Bs 8,99\nIVA R (8,00%)                    Bs 0,72\n"
           "BI A (31,00%)                    Bs 9,00\nIVA A (31,00%)                   Bs 2,79\n"
           "TOTAL VENTAS                    Bs 52,33\n"
           "BI IGTF                         Bs 20,00\nIGTF                             Bs 0,60\n"
           "----------------------------------------\n"
           "DEVOLUCIONES\nEXENTO (E)                       Bs 0,00\n"
           "BI G (16,00%)                    Bs 0,00\nIVA G (16,00%)                   Bs 0,00\n"
           "BI R (8,00%)                     Bs 9,99\nIVA R (8,00%)                    Bs 0,80\n"
           "BI A (31,00%)                    Bs 0,00\nIVA A (31,00%)                   Bs 0,00\n"
           "TOTAL DEVOLUCIONES              Bs 10,79\n"
           "----------------------------------------\n"
           "DESCUENTOS                       Bs 5,00\nIVA DE DESCUENTOS                Bs 0,79\n"
           "----------------------------------------\n"
           "FACTURAS                               1\nNOTAS DE CREDITO                       1\n"
           "DOCUMENTOS NO FISCALES                 1\nDOCUMENTOS ANULADOS                    1\n"
           "ULTIMA FACTURA                  00000001\n"},
      {"an X before the first invoice", "39 X|P",
       "\n               REPORTE X\n" + heading +
           "VENTAS\nEXENTO (E)                       Bs 0,00\nTOTAL VENTAS                     Bs 0,00\n"
           "----------------------------------------\n"
           "DEVOLUCIONES\nEXENTO (E)                       Bs 0,00\nTOTAL DEVOLUCIONES               Bs 0,00\n"
           "----------------------------------------\n"
           "DESCUENTOS                       Bs 0,00\nIVA DE DESCUENTOS                Bs 0,00\n"
           "----------------------------------------\n"
           "FACTURAS                               0\nNOTAS DE CREDITO                       0\n"
           "DOCUMENTOS NO FISCALES                 0\nDOCUMENTOS ANULADOS                    0\n"},
      {"the memory, closing by closing", std::string{busyDay} + "39 Z; 3A 00000001|00000001|",
       "\n             MEMORIA FISCAL\n              DE Z 1 A Z 1\n"
       "----------------------------------------\n"
       "Z 00000001                    24-11-2026\n" +
           sums +
           "----------------------------------------\n"
           "CIERRES Z                              1\n" +
           sums},
      {"the memory in sums", std::string{busyDay} + "39 Z; 3A 261101|261130|R",
       "\n             MEMORIA FISCAL\n      DEL 01-11-2026 AL 30-11-2026\n"
       "----------------------------------------\n"
       "CIERRES Z                              1\n" +
           sums},
  };
  for (const auto& row : rows) {
    Till till;
    till.dialogue(row.rows);
    EXPECT_EQ(till.lastSheet(), framed(row.body)) << row.what;
  }
}

TEST(Paper, ChequesToTheLetter) {
  Till till;
  till.dialogue(
      "A0; AA 1.234,56|Distribuidora La Esquina, C.A.|24 de noviembre de 2026; AB Ana Perez|V-1|0414-5551234");
  const std::string mark = "      PRUEBA - SIN VALIDEZ FISCAL\n",
                    end = mark + "- - - - - - - - - - - - - - - - - - - -\n";
  EXPECT_EQ(till.paper(), mark +
                              "CHEQUE                   Bs **1.234,56**\nPAGUESE A LA ORDEN DE\n"
                              "Distribuidora La Esquina, C.A.\n----------------------------------------\n"
                              "FECHA DE EMISION\n24 de noviembre de 2026\n" +
                              end + mark +
                              "ENDOSO\nAna Perez\nC.I. V-1               TEL. 0414-5551234\n"
                              "----------------------------------------\nFIRMA\n" +
                              end);
  EXPECT_EQ(till.device.roll().sheets()[0].kind, SheetKind::ChequeFace);
  EXPECT_EQ(till.device.roll().sheets()[1].kind, SheetKind::ChequeBack);
}

TEST(Paper, TextsAreBrokenWhereTheyFit) {
  const struct {
    const char* text;
    std::vector<const char*> lines;
  } rows[] = {
      {"", {""}},
      {"uno dos tres cuatro cinco seis siete och", {"uno dos tres cuatro cinco seis siete och"}},
      {"uno dos tres cuatro cinco seis siete och nueve",
       {"uno dos tres cuatro cinco seis siete och", "nueve"}},
      {"uno dos tres cuatro cinco seis siete ocho nueve",
       {"uno dos tres cuatro cinco seis siete", "ocho nueve"}},
      {"0123456789012345678901234567890123456789x", {"0123456789012345678901234567890123456789", "x"}},
      {"ñ ññññññññññññññññññññññññññññññññññññññññ", {"ñ", "ññññññññññññññññññññññññññññññññññññññññ"}},
  };
  for (const auto& row : rows) {
    Lines lines;
    addText(lines, row.text);
    std::string broken;
    for (const Line& line : lines) broken += line.left + "/";
    std::string expected;
    for (const char* line : row.lines) expected += std::string{line} + "/";
    EXPECT_EQ(broken, expected) << row.text;
  }
}

TEST(Paper, AChangeOfOneCentIsPrintedOnceAlsoWithAPartialClose) {
  Till till;
  till.dialogue("40 ||||||||; 42 Pan|1000|100|0|M; 44 |101|T; 45 A; 41 x|S; 45 E");
  EXPECT_EQ(occurrences(till.paper(), "CAMBIO                           Bs 0,01\n"), 1U) << till.paper();
  EXPECT_EQ(occurrences(till.paper(), "CAMBIO"), 1U);
}

TEST(Paper, ACreditNoteNamesTheInvoiceThatItTakesBack) {
  Till till;
  till.dialogue("40 Juan|V1|15|Z1A2|230517|143005|D||\n42 Cafe|1000|100|1600|m\n45 T");
  const std::string paper = till.paper();
  for (const char* line : {"FACTURA AFECTADA: 15\n", "SERIAL DEL EQUIPO: Z1A2\n",
                           "FECHA FACTURA: 17-05-2023\n", "HORA FACTURA: 14:30\n",
                           "            NOTA DE CREDITO\n", "NUMERO:                         00000001\n"})
    EXPECT_NE(paper.find(line), std::string::npos) << line;
}

TEST(Paper, NoLineIsWiderThanThePaper) {
  const std::string longest(60, 'W');
  Till till;
  till.dialogue("5D 1|" + longest + "\n40 " + longest + "|" + longest + "|||||||\n42 " + longest +
                "|999999999|99999|1600|M\n41 uno dos tres cuatro cinco seis siete ocho nueve diez|S\n44 " +
                longest + "|9999999999999|T\n45 T");
  for (const std::string& line : zentaro::testing::split(till.paper(), '\n'))
    EXPECT_LE(columnsOf(line), paperColumns) << line;
  EXPECT_NE(till.paper().find("\nuno dos tres cuatro cinco seis siete\nocho nueve diez\n"),
            std::string::npos);
}

TEST(Paper, AccentsCountAsOneColumn) {
  Lines lines;
  addPair(lines, "Pi\u00F1a", "1");
  addText(lines, std::string(39, 'x') + "\u00D1");
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(textLine(lines[0]), "Pi\u00F1a" + std::string(35, ' ') + "1");
  addPair(lines, std::string(30, 'x'), "123456789");  // 30, a blank, and 9: exactly as wide as the paper
  EXPECT_EQ(textLine(lines.back()), std::string(30, 'x') + " 123456789");
}

TEST(Paper, OnlyTheLastSheetsAreKept) {
  Roll roll;
  for (std::size_t number = 0; number < Roll::keptSheets + 5; ++number) {
    roll.print({{LineStyle::Plain, std::to_string(number), {}, {}}});
    roll.cut("x");
  }
  EXPECT_EQ(roll.sheets().size(), Roll::keptSheets);
  EXPECT_EQ(roll.sheets().front().lines[1].left, "5");
  roll.cut("nothing on it");
  EXPECT_EQ(roll.sheets().back().title, "x");
}

// Tags that open and close, in balance; good enough to see a drawing that no viewer would read.
bool isBalanced(const std::string& markup) {
  std::vector<std::string> open;
  for (std::size_t at = markup.find('<'); at != std::string::npos; at = markup.find('<', at + 1)) {
    const std::size_t end = markup.find('>', at);
    if (end == std::string::npos) return false;
    const std::string tag = markup.substr(at + 1, end - at - 1);
    const std::string name = tag.substr(0, tag.find_first_of(" \n"));
    if (name[0] == '!' || name == "meta" || tag.back() == '/') continue;
    if (name[0] != '/') {
      open.push_back(name);
    } else {
      if (open.empty() || "/" + open.back() != name) return false;
      open.pop_back();
    }
  }
  return open.empty();
}

TEST(Drawing, HostTextsCannotBreakTheMarkup) {
  Books books;
  books.header = {"\x1B[2J\u009B\x7F", "\xED\xA0\x80|\xC0\xAF|\xF4\x90\x80\x80", "\uFFFE\U0001F600",
                  "\xE2\x82", "\xFF"};
  Till till{books};
  till.dialogue(
      "40 <b>&\"Juan\"</text>|V1|||||||\n42 a < b|1000|100|0|M\n44 |100|T\n45 T\nA0\nAA 1,00|Peña & Co|hoy");
  const auto& sheets = till.device.roll().sheets();
  for (const std::string& markup : {svgPaper(sheets), htmlPaper(sheets)}) {
    EXPECT_TRUE(isBalanced(markup)) << markup;
    for (const char* text : {"&lt;b&gt;&amp;&quot;Juan&quot;&lt;/text&gt;", ">.[2J..<", ">.|..|.<",
                             ">.\U0001F600<", ">..<", ">.<"})
      EXPECT_NE(markup.find(text), std::string::npos) << text;
  }
  EXPECT_TRUE(isBalanced(svgPaper({})));
  EXPECT_TRUE(isBalanced(htmlPaper({})));
}

// A sheet of one line: where the text stands, and how it looks.
TEST(Drawing, EachStyleHasItsLook) {
  const struct {
    Line line;
    const char* drawn;
  } rows[] = {
      {{LineStyle::Plain, "left", "right", ""},
       "<text x=\"24\" y=\"37\" text-anchor=\"start\" textLength=\"28.8\" lengthAdjust=\"spacingAndGlyphs\">left</text>\n"
       "<text x=\"312\" y=\"37\" text-anchor=\"end\" textLength=\"36.0\" lengthAdjust=\"spacingAndGlyphs\">right</text>\n"},
      {{LineStyle::Bold, "", "", "middle"},
       "<text x=\"168\" y=\"37\" text-anchor=\"middle\" textLength=\"43.2\" lengthAdjust=\"spacingAndGlyphs\" "
       "font-weight=\"bold\">middle</text>\n"},
      {{LineStyle::Title, "", "", "TITLE"},
       "y=\"43\" text-anchor=\"middle\" textLength=\"48.0\" lengthAdjust=\"spacingAndGlyphs\" font-size=\"16\" "
       "font-weight=\"bold\">TITLE</text>\n"},
      {{LineStyle::Title, "", "", "A TITLE THAT HAS NO ROOM TO BE LARGE"},
       "lengthAdjust=\"spacingAndGlyphs\" font-weight=\"bold\">A TITLE"},
      {{LineStyle::Faint, "faint", "", ""}, " fill=\"#777\">faint</text>"},
      {{LineStyle::Rule, "", "", ""}, "<path d=\"M24 32H312\" stroke=\"#55555c\" stroke-dasharray=\"4 3\"/>"},
  };
  for (const auto& row : rows) {
    const Drawing drawing = drawSheet({SheetKind::Roll, "", {row.line}});
    EXPECT_NE(drawing.content.find(row.drawn), std::string::npos) << drawing.content;
    EXPECT_EQ(drawing.width, 336);
    EXPECT_EQ(drawing.height, row.line.style == LineStyle::Title ? 75 : 65);
  }
}

TEST(Drawing, EverySheetIsDrawnInsideThePage) {
  Till till;
  for (int number = 0; number < 9; ++number) till.dialogue("48\n49 HOLA\n4A\nA0\nAB JOSE|V1|0414\nA1");
  const auto& sheets = till.device.roll().sheets();
  ASSERT_EQ(sheets.size(), 18U);
  const std::string svg = svgPaper(sheets);
  EXPECT_EQ(occurrences(svg, "<g transform"), 18U);
  EXPECT_EQ(occurrences(svg, ">HOLA<"), 9U);
  for (const std::string& paper : {svg, htmlPaper(sheets), textPaper(sheets)})
    EXPECT_EQ(occurrences(paper, "PRUEBA - SIN VALIDEZ FISCAL"), 36U) << "at head and foot of every sheet";
  const int width = std::stoi(svg.substr(svg.find("width=\"") + 7));
  const int height = std::stoi(svg.substr(svg.find("height=\"") + 8));
  EXPECT_EQ(width, 2 * (336 + 520) + 5 * 28) << "four beside each other, with gaps between and around";
  std::size_t sheet = 0;
  for (std::size_t at = svg.find("<g transform"); at != std::string::npos;
       at = svg.find("<g transform", at + 1)) {
    const std::size_t numbers = svg.find('(', at) + 1;
    const Drawing drawing = drawSheet(sheets[sheet++]);
    EXPECT_LE(std::stoi(svg.substr(numbers)) + drawing.width, width);
    EXPECT_LE(std::stoi(svg.substr(svg.find(',', numbers) + 1)) + drawing.height, height);
  }
  EXPECT_EQ(occurrences(htmlPaper(sheets), "<figure>"), 18U);
}

}  // namespace virtual_printer::paper_test
