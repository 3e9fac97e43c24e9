// A whole document as a file describes it, its amounts already whole numbers.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "till/document/decimal.h"
#include "till/document/member_names.h"

namespace zentaro::till {

struct Item {
  std::string description;
  Cents price = 0;  // without tax
  Thousandths quantity = 1000;
  Rate tax = 0;
};
using Line = std::variant<Item, std::string>;  // an item, or the text of an extra line

struct Discount {
  Cents amount = 0;  // without tax
  std::string description;
};

struct Payment {
  Cents amount = 0;
  std::string medium;  // empty: cash
};

/// The invoice that a credit note takes back. Date "2024-03-15" and time "14:05:00", or empty.
struct Reference {
  std::string number, serial, date, time;
};

struct Igtf {
  Cents base = 0;  // 0: none
  Rate rate = 300;
};

struct Sale {
  FileLanguage language = FileLanguage::English;  // in which its file names the members
  bool isCreditNote = false;
  std::string customerName, customerRif;
  Reference invoice;
  std::vector<Line> lines;
  std::vector<Discount> discounts;
  std::vector<Payment> payments;
  Igtf igtf;
  std::vector<std::string> extraLines;  // behind the payments

  // What the program makes of it, with tax and without the IGTF: nothing is printed that adds up to another.
  std::optional<Cents> total;
  // What the file's prices add up to where they are with tax; those in here are without it all the same.
  std::optional<Cents> sumWithTax;
};

}  // namespace zentaro::till
