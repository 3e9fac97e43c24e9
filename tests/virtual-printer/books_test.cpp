// The books as JSON: nothing is lost on the way, and a damaged file is refused with its fault named.
#include <gtest/gtest.h>

#include "virtual-printer/fiscal/books_json.h"

namespace virtual_printer::books_test {

constexpr LocalTime someTime =
    std::chrono::local_days{std::chrono::year{2026} / 1 / 31} + std::chrono::seconds{50700};

Books fullBooks() {
  Books books;
  books.counters = {3, 2, 5, 1};
  books.day.rates.rates = {0, 1600, 0, 3100};
  books.day.sales = {{1, 2, 3, 4}, {0, 5, 6, 7}, 8, 9};
  books.day.returns = {{10, 20, 30, 40}, {0, 50, 60, 70}, 80, 90};
  books.day.discounts = 11;
  books.day.discountTax = 12;
  books.day.invoices = 13;
  books.day.creditNotes = 14;
  books.day.nonFiscals = 15;
  books.day.cancelled = 16;
  books.lastInvoice = {3, someTime};
  books.zRecords.push_back({1, someTime, books.day, {2, someTime}});
  books.zRecords.push_back({2, someTime, {}, {2, someTime}});
  books.header = {"CALLE \"REAL\"", "", "", "", "Pi\u00F1a"};
  books.footer[4] = "GRACIAS";
  books.clockOffset = std::chrono::seconds{-86'400};
  books.open = OpenMark{DocumentKind::CreditNote, 2};
  return books;
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

std::string nested(const std::string& open, const std::string& close) {
  std::string begin, end;
  for (int level = 0; level < 100'000; ++level) (begin += open, end += close);
  return begin + "1" + end;
}

TEST(BooksAsJson, NothingIsLostOnTheWay) {
  for (const Books& books : {Books{}, fullBooks()}) EXPECT_TRUE(booksFromJson(toJson(books)) == books);
}

TEST(BooksAsJson, WhatIsWrongIsNamed) {
  const std::string written = toJson(fullBooks());
  const std::size_t sum = written.find(" \"checksum\"");
  const std::string good = std::string{written}.erase(sum, written.find('\n', sum) - sum);
  const struct {
    std::string text;
    const char* complaint;
  } rows[] = {
      {"", "it is not JSON, by a mistake in line 1"},
      {replaced(good, "\"z\": 1", "\"z\": 1,"), "it is not JSON, by a mistake in line 8"},
      {good.substr(0, good.size() / 2), "it is not JSON"},
      {replaced(written, "\"invoice\": 3", "\"invoice\": 4"), "it was changed since it was written; remove"},
      {replaced(written, "\"number\":2", "\"number\":3"), "it was changed since it was written; remove"},
      {nested("[", "]"), "it is nested too deeply"},
      {nested("{\"a\":", "}"), "it is nested too deeply"},
      {"[]", "format is missing"},
      {"{}", "format is missing"},
      {replaced(good, "\"format\": 1", "\"format\": 2"), "format 2 is not known"},
      {replaced(good, "\"format\": 1", "\"format\": 1e999"), "too large"},
      {replaced(good, "\"invoice\": 3", "\"invoice\": \"3\""),
       "counters.invoice: a whole number is expected"},
      {replaced(good, "\"invoice\": 3", "\"invoice\": 3.5"), "counters.invoice: a whole number is expected"},
      {replaced(good, "\"invoice\": 3", "\"invoice\": -3"), "counters.invoice: the number is out of range"},
      {replaced(good, "\"invoice\": 3", "\"invoice\": 100000000"),
       "counters.invoice: the number is out of range"},
      {replaced(good, "\"creditNote\": 2", "\"kreditNote\": 2"), "counters: creditNote is missing"},
      {replaced(good, "2026-01-31T14:05:00", "2026-02-31T14:05:00"), "lastInvoice.closedAt: a time like"},
      {replaced(good, "\"GRACIAS\"", "7"), "footer[4]: a text is expected"},
      {replaced(good, "\"GRACIAS\"", "\"GRACIAS\", \"x\""), "footer: a list of 5 is expected"},
      {replaced(good, "\"kind\": \"creditNote\"", "\"kind\": \"note\""),
       "open.kind: invoice, creditNote or nonFiscal"},
      {replaced(good, "-86400", "9000000000000000000"), "clockOffset: the number is out of range"},
      {replaced(good, "\"igtf\": 9", "\"igtf\": 9000000000000000001"),
       "day.sales.igtf: the number is out of range"},
  };
  for (const auto& row : rows) {
    try {
      booksFromJson(row.text);
      ADD_FAILURE() << "accepted, but expected: " << row.complaint;
    } catch (const std::runtime_error& error) {
      EXPECT_NE(std::string{error.what()}.find(row.complaint), std::string::npos)
          << error.what() << "\nexpected: " << row.complaint;
    }
  }
}

}  // namespace virtual_printer::books_test
