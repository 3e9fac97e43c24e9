// What a file may say, and what is said about a wrong one.
#include "till/document/sale_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "support/bytes.h"
#include "till/document/content.h"
#include "till/document/paper_check.h"

namespace zentaro::till::sale_file_test {

std::string listed(const Problems& problems) {
  std::string all;
  for (const Problem& problem : problems) all += problem.path + ": " + problem.text + "\n";
  return all;
}

TEST(SaleFile, KeepsAmountsAsTheyAreWritten) {
  const auto [sale, problems] = readSale(R"({"document": "invoice",
      "customer": {"name": "éééééééééééééééééééééééééééééééééééééééé", "rif": "J1"},
      "lines": [{"description": "A", "price": 0.1, "quantity": "2.005", "tax": 16}, {"text": "T"},
                {"description": 7, "price": "9999999999.99", "tax": 8.5}],
      "discounts": [{"amount": 1}],
      "payments": [{"amount": 100000000000000000000e0}, {"amount": 12.30, "medium": 3}],
      "igtf": {"base": 10}, "extraLines": ["Adiós"]})");
  ASSERT_EQ(problems.size(), 1U) << listed(problems);
  EXPECT_EQ(problems[0].path, "payments[0].amount");
  EXPECT_EQ(problems[0].text, "\"100000000000000000000e0\" has an exponent; write all digits");
  const Item& first = std::get<Item>(sale.lines[0]);
  EXPECT_EQ(first.price, 10);
  EXPECT_EQ(first.quantity, 2005);
  EXPECT_EQ(first.tax, 1600);
  EXPECT_EQ(std::get<std::string>(sale.lines[1]), "T");
  const Item& last = std::get<Item>(sale.lines[2]);
  EXPECT_EQ(last.description, "7");
  EXPECT_EQ(last.price, 999999999999);
  EXPECT_EQ(last.quantity, 1000) << "one piece when nothing is said";
  EXPECT_EQ(sale.payments[1].medium, "3");
  EXPECT_EQ(sale.igtf.base, 1000);
  EXPECT_EQ(sale.igtf.rate, 300);
  EXPECT_EQ(sale.extraLines, std::vector<std::string>{"Adiós"});
}

TEST(SaleFile, NamesTheInvoiceThatACreditNoteTakesBack) {
  const auto [sale, problems] = readSale(R"({"document": "credit note",
      "invoice": {"number": 12, "serial": "Z1", "date": "2024-02-29", "time": "00:00"},
      "lines": [{"description": "A", "price": 1, "tax": 0}]})");
  EXPECT_TRUE(problems.empty()) << listed(problems);
  EXPECT_TRUE(sale.isCreditNote);
  EXPECT_EQ(sale.invoice.number, "12");
  EXPECT_EQ(sale.invoice.time, "00:00:00");
}

// Each row changes one thing of a good file, and has one problem.
TEST(SaleFile, NamesThePathOfEachProblem) {
  const std::string good =
      R"({"document": "invoice", "lines": [{"description": "A", "price": 1, "tax": 0}]})";
  ASSERT_TRUE(readSale(good).problems.empty());
  struct {
    const char* from;
    const char* to;
    const char* problem;
  } const rows[] = {
      {"\"price\": 1", "\"price\": \"1,5\"", "lines[0].price: \"1,5\" has a comma; if it is 1.5, write"},
      {"\"price\": 1", "\"price\": \"1,250\"",
       "lines[0].price: \"1,250\" has a comma and may be 1.250 or 1250;"},
      {"\"tax\": 0", "\"tax\": 0.16", "lines[0].tax: 0.16 means 0.16 %; if it is 16 %, write 16"},
      {"\"lines\"", "\"igtf\": {\"base\": 1, \"rate\": 0.03}, \"lines\"", "igtf.rate: 0.03 means 0.03 %"},
      {"\"lines\"", "\"keepAccents\": 1, \"lines\"", "keepAccents: is a number; write true or false"},
      {"\"invoice\"", "\"credit note\", \"invoice\": {\"number\": 1, \"date\": \"1899-12-30\"}",
       "invoice.date: \"1899-12-30\" is not of this century"},
      {"\"invoice\"", "\"credit note\", \"invoice\": {\"number\": 1, \"date\": \"2100-01-01\"}",
       "invoice.date: \"2100-01-01\" is not of this century"},
      {"\"price\": 1", "\"price\": \"1.250\"", "lines[0].price: \"1.250\" may be 1.25 or 1250; write two"},
      {"\"price\": 1", "\"price\": null", "lines[0].price: is null; write a number"},
      {"\"lines\"", "\"prices\": \"con impuesto\", \"lines\"",
       "prices: is \"con impuesto\"; write \"with tax\" / \"without tax\""},
      {"\"lines\"", "\"total\": \"1,00\", \"lines\"", "total: \"1,00\" has a comma; if it is 1.00"},
      {"\"price\": 1, ", "", "lines[0].price: is missing; write a number"},
      {"\"price\": 1", "\"price\": 1, \"quantity\": 0",
       "lines[0].quantity: \"0\" is outside 0.001 to 999999.999"},
      {"\"tax\": 0", "\"tax\": 100", "lines[0].tax: \"100\" is outside 0 to 99.99"},
      {"\"tax\": 0", "\"tax\": 0, \"discount\": 1",
       "lines[0].discount: is not known here; known are description, price, quantity, tax"},
      {"\"A\"", "\"  \"", "lines[0].description: is empty"},
      {"\"A\"", "\"a\\u001cb\"", "lines[0].description: holds a control character"},
      {"\"A\"", "[]", "lines[0].description: is a list; write a text"},
      {"\"A\"", "\"a\\u007fb\"", "lines[0].description: holds a control character"},
      {"\"invoice\"", "\"credit note\", \"invoice\": {\"number\": 1}, \"payments\": [{\"amount\": 1}]",
       "payments: stand on a credit note"},
      {"[{", "[7, {", "lines[0]: is a number; write a group in braces"},
      {"\"invoice\"", "\"ticket\"", "document: is \"ticket\"; write \"invoice\" / \"credit note\""},
      {"\"invoice\"", "\"credit note\"", "invoice: is missing; name the invoice"},
      {"\"lines\"", "\"invoice\": {\"number\": 1}, \"lines\"", "invoice: belongs to a credit note"},
      {"\"invoice\"", "\"credit note\", \"invoice\": {\"number\": 1, \"date\": \"2023-02-29\"}",
       "invoice.date: \"2023-02-29\" is no date"},
      {"\"invoice\"", "\"credit note\", \"invoice\": {\"number\": 1, \"date\": \"240315\"}",
       "invoice.date: \"240315\" is no date; write year-month-day"},
      {"\"invoice\"",
       "\"credit note\", \"invoice\": {\"number\": 1, \"date\": \"2023-02-28\", \"time\": \"24:00\"}",
       "invoice.time: \"24:00\" is no time"},
      {"\"invoice\"", "\"credit note\", \"invoice\": {\"number\": 1, \"time\": \"12:00\"}",
       "invoice.time: stands without a date"},
      {"\"lines\"", "\"customer\": {\"rif\": \"J-123456789-012\"}, \"lines\"",
       "customer.rif: is longer than 14 characters"},
      {"\"lines\"", "\"payments\": [{\"amount\": 0}], \"lines\"",
       "payments[0].amount: \"0\" is outside 0.01"},
      {"\"lines\"", "\"discounts\": {}, \"lines\"", "discounts: is a group; write a list in brackets"},
      {"\"description\": \"A\", \"price\": 1, \"tax\": 0", "\"text\": \"A\"", "lines: holds no item"},
      {"\"lines\"", "\"document\": \"invoice\", \"lines\"", ": the name \"document\" stands twice"},
      {"\"price\": 1", "\"price\": 1.", ": parse error at line 1, column"},
      {"]}", "]", ": parse error at line 1, column"},
  };
  for (const auto& row : rows) {
    std::string text = good;
    const std::size_t at = text.find(row.from);
    ASSERT_NE(at, std::string::npos) << row.from;
    const Problems problems = readSale(text.replace(at, std::string(row.from).size(), row.to)).problems;
    EXPECT_EQ(problems.size(), 1U) << text << "\n" << listed(problems);
    EXPECT_EQ(listed(problems).rfind(row.problem, 0), 0U) << row.problem << "\n" << listed(problems);
  }
  EXPECT_EQ(readSale(std::string(100000, '[')).problems[0].text, "groups and lists are nested too deeply");
  for (const char* other : {"{\"caf\xE9\"}", "\xFF\xFE{"})
    EXPECT_TRUE(readSale(other).problems[0].text.ends_with("; save it as UTF-8")) << other;
  EXPECT_EQ(readSale("[]").problems[0].text, "there is no group in braces");
}

// Where the mistake is, and what it is, in files as people write them.
TEST(SaleFile, TellsWhyItIsNoJson) {
  struct {
    const char* text;
    const char* problem;
  } const rows[] = {
      {"{\"a\": 1\n  \"b\": 2}", "parse error at line 2, column 3: a comma is missing before \"b\""},
      {"{\"a\": {} {", "parse error at line 1, column 10: a comma is missing before {"},
      {"{\"a\": 1,}", "parse error at line 1, column 9: there is a comma too many before }"},
      {"[1, 2, ]", "parse error at line 1, column 8: there is a comma too many before ]"},
      {"{\"a\" 1}", "parse error at line 1, column 6: a colon is missing before 1"},
      {"{a: 1}", "parse error at line 1, column 2: a name in double quotes is expected, not a"},
      {"{\"a\": 'x'}", "parse error at line 1, column 7: ' is not understood: texts stand in double quotes"},
      {"{\"a\": 1", "parse error at line 1, column 8: it ends in the middle"},
      {"{\"a\": \"x\n\"}", "parse error at line 1, column 7: a text does not end on its line"},
      {"{\"a\": 1.}", "parse error at line 1, column 7: 1. is no number such as 12.50"},
      {"", "parse error at line 1, column 1: there is nothing"},
  };
  for (const auto& row : rows) {
    const std::string problem = readSale(row.text).problems.at(0).text;
    EXPECT_TRUE(problem.starts_with(row.problem)) << row.text << ": " << problem;
  }
}

TEST(SaleFile, WritesCapitalsWithoutAccentsUnlessToldNotTo) {
  const std::string text =
      R"({"documento": "factura", "cliente": {"nombre": "JOSÉ PÉREZ Ñandú"}, "renglones": [
      {"descripcion": "PINGÜINO àé", "precio": 1, "impuesto": 16}, {"texto": "ÁÉÍÓÚ"}], "pagos": [{"monto": 2, "medio": "É"}],
      "lineasExtra": ["ÇÀ"]})";
  const auto texts = [](const Sale& sale) {
    return sale.customerName + "|" + std::get<Item>(sale.lines[0]).description + "|" +
           std::get<std::string>(sale.lines[1]) + "|" + sale.payments[0].medium + "|" + sale.extraLines[0];
  };
  EXPECT_EQ(texts(readSale(text).sale), "JOSE PEREZ Ñandú|PINGUINO aé|AEIOU|É|CA");
  std::string kept = text;
  kept.insert(1, "\"conservarAcentos\": true, ");
  EXPECT_EQ(texts(readSale(kept).sale), "JOSÉ PÉREZ Ñandú|PINGÜINO àé|ÁÉÍÓÚ|É|ÇÀ");
}

constexpr auto inSpanish =
    R"({"documento": "nota de credito", "cliente": {"nombre": "JABÓN Á", "rif": "V-12345678-9"},
    "factura": {"numero": 12, "serial": "Z1", "fecha": "2024-02-29", "hora": "14:05"},
    "renglones": [{"descripcion": "Queso de mano fresco", "precio": 9.99, "cantidad": "0.525", "impuesto": 8},
                  {"texto": "Café"}],
    "descuentos": [{"monto": 1, "descripcion": "Fiel"}], "igtf": {"base": 2, "tasa": 3}, "lineasExtra": ["Gracias"]})";

TEST(SaleFile, TakesSpanishNamesAsWellButNeverBoth) {
  const auto [spanish, problems] = readSale(inSpanish);
  EXPECT_TRUE(problems.empty()) << listed(problems);
  const auto [english, none] = readSale(R"({"document": "credit note", "customer": {"name": "JABÓN Á",
      "rif": "V-12345678-9"}, "invoice": {"number": 12, "serial": "Z1", "date": "2024-02-29", "time": "14:05"},
    "lines": [{"description": "Queso de mano fresco", "price": 9.99, "quantity": "0.525", "tax": 8},
              {"text": "Café"}],
    "discounts": [{"amount": 1, "description": "Fiel"}], "igtf": {"base": 2, "rate": 3}, "extraLines": ["Gracias"]})");
  EXPECT_TRUE(none.empty()) << listed(none);
  EXPECT_EQ(contentDigest(spanish), contentDigest(english));
  std::string accented = inSpanish;
  accented.replace(accented.find("credito"), 7, "cr\u00E9dito");
  EXPECT_EQ(contentDigest(readSale(accented).sale), contentDigest(english));
  std::string mixed = inSpanish;
  mixed.replace(mixed.find("precio"), 6, "price");
  EXPECT_EQ(listed(readSale(mixed).problems),
            "renglones[0].precio: is missing; write a number\n"
            "renglones[0].price: is in another language than the rest of the file; write precio\n");
}

// What is printed is the same, and so is its digest: a program may go over to the other way of writing.
TEST(SaleFile, TakesPricesWithTaxForTheWholeOfIt) {
  const auto [with, problems] =
      readSale(R"({"documento": "factura", "precios": "con impuesto", "total": 104.4,
      "renglones": [{"descripcion": "Pan", "precio": 116, "impuesto": 16}], "descuentos": [{"monto": 11.6}]})");
  EXPECT_TRUE(problems.empty()) << listed(problems);
  const Sale without = readSale(R"({"document": "invoice", "prices": "without tax",
      "lines": [{"description": "Pan", "price": 100, "tax": 16}], "discounts": [{"amount": 10}]})")
                           .sale;
  EXPECT_EQ(contentDigest(with), contentDigest(without));
  EXPECT_EQ(with.total, 10440);
  EXPECT_EQ(with.sumWithTax, 10440);
  EXPECT_EQ(without.sumWithTax, std::nullopt);
}

TEST(SaleFile, HasAnotherDigestForEachOtherContent) {
  const char* const files[] = {
      R"({"document": "invoice", "lines": [{"description": "Pan", "price": 10}], "payments": [{"amount": 30, "medium": "300"}]})",
      R"({"document": "invoice", "lines": [{"description": "Pan", "price": 10}], "igtf": {"base": 30, "rate": 3},
          "extraLines": ["0", "300"]})",
      R"({"document": "invoice", "lines": [{"description": "Pan", "price": 10}], "payments": [{"amount": 30}]})",
      R"({"document": "invoice", "lines": [{"description": "Pan", "price": 10}], "discounts": [{"amount": 1}]})",
      R"({"document": "invoice", "lines": [{"description": "Pan", "price": 10, "tax": 8}]})",
      R"({"document": "invoice", "lines": [{"description": "Pan", "price": 10, "quantity": 2}]})",
      R"({"document": "invoice", "lines": [{"description": "Pan", "price": 10}, {"text": "a"}, {"text": "b"}]})",
      R"({"document": "invoice", "lines": [{"description": "Pan", "price": 10}, {"text": "ab"}]})",
      R"({"document": "invoice", "customer": {"name": "Ana"}, "lines": [{"description": "Pan", "price": 10}]})",
      R"({"document": "invoice", "customer": {"rif": "Ana"}, "lines": [{"description": "Pan", "price": 10}]})",
  };
  std::set<std::string> digests;
  for (const char* file : files) digests.insert(contentDigest(readSale(file).sale));
  EXPECT_EQ(digests.size(), std::size(files));
  const Sale paid = readSale(files[0]).sale, taxed = readSale(files[1]).sale;
  EXPECT_EQ(oldContentDigest(paid), "1:e309e2f5f02c514c") << "as old journals have it";
  EXPECT_EQ(oldContentDigest(taxed), oldContentDigest(paid)) << "these two were one";
}

TEST(SaleFile, WarnsOfWhatPaperLoses) {
  const std::string warnings = listed(paperWarnings(readSale(inSpanish).sale, 14));
  EXPECT_EQ(
      warnings,
      "cliente.rif: the check digit should be 1\n"
      "renglones[0].descripcion: is cut to 14 characters: \"Queso de mano\"\n"
      "renglones: shorten them, or give them more room: zentaro settings set LenDescripcionZT 20 (now 14)\n");
  std::string many = "{\"document\": \"invoice\", \"payments\": [{\"amount\": 900}], \"lines\": [";
  for (int line = 0; line < 300; ++line)
    many += R"({"description": "Cable de 2\" muy, muy largo", "price": 1, "tax": 16},)";
  const std::string told = listed(paperWarnings(readSale(many + R"({"text": "2\""}]})").sale, 14));
  EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 5) << told;
  EXPECT_TRUE(testing::contains(
      told,
      "lines: 297 more texts are cut; shorten them, or give them more room: zentaro settings "
      "set LenDescripcionZT 26 (now 14)\n"))
      << told;
  EXPECT_TRUE(testing::contains(told, "lines[300].text: prints as \"2'\"\n")) << told;
  const std::string twoLines =
      R"({"document": "invoice", "lines": [{"description": "A", "price": 10, "tax": 16},
      {"description": "B", "price": 20, "tax": 16}], "discounts": [{"amount": 2, "description": "C"}, {"amount": )";
  for (const auto& [amount, warned] : std::map<std::string, std::string>{
           {"20.01",
            "discounts[1].amount: 20.01 is more than the largest line, 20.00; it is "
            "taken off the whole document: if it belongs to a line, lower its price\n"},
           {"20.00", ""}})
    EXPECT_EQ(listed(paperWarnings(readSale(twoLines + amount + R"(, "description": "D"}]})").sale, 14)),
              warned);
  for (const char* rif : {"V-12345678", "V-123456", "J-12345678-4", "V12345678", "J-50100000-0"})
    EXPECT_EQ(rifDoubt(rif), "") << rif;
  for (const char* rif : {"12345678", "V-12345", "X-12345678", "J-1234567890", "V-"})
    EXPECT_NE(rifDoubt(rif), "") << rif;
}

}  // namespace zentaro::till::sale_file_test
