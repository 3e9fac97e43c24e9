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
  books.header = {"\x1B[2J\u009B", "\xED\xA0\x80|\xC0\xAF|\xF4\x90\x80\x80", "\uFFFE\U0001F600", "\xE2\x82",
                  "\xFF"};
  Till till{books};
  till.dialogue(
      "40 <b>&\"Juan\"</text>|V1|||||||\n42 a < b|1000|100|0|M\n44 |100|T\n45 T\nA0\nAA 1,00|Peña & Co|hoy");
  const auto& sheets = till.device.roll().sheets();
  for (const std::string& markup : {svgPaper(sheets), htmlPaper(sheets)}) {
    EXPECT_TRUE(isBalanced(markup)) << markup;
    for (const char* text : {"&lt;b&gt;&amp;&quot;Juan&quot;&lt;/text&gt;", ">.[2J.<", ">.|..|.<",
                             ">.\U0001F600<", ">..<", ">.<"})
      EXPECT_NE(markup.find(text), std::string::npos) << text;
  }
  EXPECT_TRUE(isBalanced(svgPaper({})));
  EXPECT_TRUE(isBalanced(htmlPaper({})));
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
