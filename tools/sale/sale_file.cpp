// The members of a sale.
#include "sale/sale_file.h"

#include <algorithm>
#include <optional>

#include "automation/automation_error.h"
#include "automation/conversions.h"

namespace zentaro::tools {

namespace {

// What the printer takes.
constexpr NumberRule priceRule{2, 0, 999'999'999'999};
constexpr NumberRule quantityRule{3, 1, 999'999'999};
constexpr NumberRule taxRule{2, 0, 9999};
constexpr NumberRule amountRule{2, 1, 9'999'999'999'999};
constexpr TextRule nameRule{Presence::Optional, 40};
constexpr TextRule rifRule{Presence::Optional, 14};
constexpr TextRule discountTextRule{Presence::Optional, 20};
constexpr TextRule freeText{};  // the library cuts it at the width of the paper
constexpr TextRule optionalText{Presence::Optional};

/// Digits where the pattern has a 0, else the pattern's own characters.
bool hasForm(std::string_view text, std::string_view pattern) {
  return std::equal(text.begin(), text.end(), pattern.begin(), pattern.end(),
                    [](char c, char wanted) { return wanted == '0' ? c >= '0' && c <= '9' : c == wanted; });
}

bool isDate(const std::string& text) {
  try {
    toDate(text);
    return true;
  } catch (const AutomationError&) {
    return false;
  }
}

class SaleReader {
 public:
  explicit SaleReader(const Node& root) : document_(std::in_place, root, "", reading_.problems) {}

  SaleReading read() && {
    readKind();
    readCustomer();
    readInvoice();
    readLines();
    readDiscounts();
    readPayments();
    readIgtf();
    readExtraLines();
    document_.reset();  // reports the unknown names
    return std::move(reading_);
  }

 private:
  void readKind() {
    const std::string kind = document_->text("document", freeText);
    sale_.isCreditNote = kind == "credit note";
    if (!kind.empty() && !sale_.isCreditNote && kind != "invoice")
      document_->report("document", "is \"" + kind + "\"; write \"invoice\" or \"credit note\"");
  }

  void readCustomer() {
    const Node* node = document_->find("customer");
    if (node == nullptr) return;
    GroupReader customer(*node, "customer", reading_.problems);
    sale_.customerName = customer.text("name", nameRule);
    sale_.customerRif = customer.text("rif", rifRule);
  }

  void readInvoice() {
    const Node* node = document_->find("invoice");
    if (sale_.isCreditNote && node == nullptr)
      document_->report("invoice", "is missing; name the invoice that the credit note takes back");
    if (!sale_.isCreditNote && node != nullptr)
      document_->report("invoice", "belongs to a credit note; remove it, or make the document a credit note");
    if (node == nullptr) return;
    GroupReader invoice(*node, "invoice", reading_.problems);
    sale_.invoice = {invoice.text("number", freeText), invoice.text("serial", optionalText),
                     invoice.text("date", optionalText), invoice.text("time", optionalText)};
    checkMoment(invoice);
  }

  void checkMoment(GroupReader& invoice) {
    auto& [number, serial, date, time] = sale_.invoice;
    if (!date.empty() && (!hasForm(date, "0000-00-00") || !isDate(date)))
      invoice.report("date", "\"" + date + "\" is no date; write year-month-day: 2024-03-15");
    if (time.empty()) return;
    if (hasForm(time, "00:00")) time += ":00";
    if (!hasForm(time, "00:00:00") || !isDate(time))
      invoice.report("time", "\"" + time + "\" is no time; write hours and minutes: 14:05");
    if (date.empty()) invoice.report("time", "stands without a date; write the date too");
  }

  void readLines() {
    const std::vector<Node>& lines = document_->list("lines");
    for (std::size_t i = 0; i < lines.size(); ++i) {
      GroupReader line(lines[i], indexed("lines", i), reading_.problems);
      if (line.has("text"))
        sale_.lines.emplace_back(line.text("text", freeText));
      else
        sale_.lines.emplace_back(readItem(line));
    }
    const auto isItem = [](const Line& line) { return std::holds_alternative<Item>(line); };
    if (std::none_of(sale_.lines.begin(), sale_.lines.end(), isItem))
      document_->report("lines", "holds no item; a document needs one at least");
  }

  static Item readItem(GroupReader& line) {
    Item item;
    item.description = line.text("description", freeText);
    item.price = line.number("price", priceRule);
    if (line.find("quantity") != nullptr) item.quantity = line.number("quantity", quantityRule);
    item.tax = line.number("tax", taxRule);
    return item;
  }

  void readDiscounts() {
    const std::vector<Node>& discounts = document_->list("discounts");
    for (std::size_t i = 0; i < discounts.size(); ++i) {
      GroupReader discount(discounts[i], indexed("discounts", i), reading_.problems);
      const Cents amount = discount.number("amount", amountRule);
      sale_.discounts.push_back({amount, discount.text("description", discountTextRule)});
    }
  }

  void readPayments() {
    const std::vector<Node>& payments = document_->list("payments");
    for (std::size_t i = 0; i < payments.size(); ++i) {
      GroupReader payment(payments[i], indexed("payments", i), reading_.problems);
      const Cents amount = payment.number("amount", amountRule);
      sale_.payments.push_back({amount, payment.text("medium", optionalText)});
    }
    if (sale_.isCreditNote && !payments.empty())
      document_->report("payments", "stand on a credit note, which takes none; remove them");
  }

  void readIgtf() {
    const Node* node = document_->find("igtf");
    if (node == nullptr) return;
    GroupReader igtf(*node, "igtf", reading_.problems);
    sale_.igtf.base = igtf.number("base", amountRule);
    if (igtf.find("rate") != nullptr) sale_.igtf.rate = igtf.number("rate", taxRule);
  }

  void readExtraLines() {
    const std::vector<Node>& lines = document_->list("extraLines");
    for (std::size_t i = 0; i < lines.size(); ++i)
      sale_.extraLines.push_back(readText(lines[i], indexed("extraLines", i), freeText, reading_.problems));
  }

  SaleReading reading_;
  Sale& sale_ = reading_.sale;
  std::optional<GroupReader> document_;
};

}  // namespace

SaleReading readSale(std::string_view json) {
  const ParsedNode parsed = parseNode(json);
  if (!parsed.root) return {{}, {{"", parsed.problem}}};
  if (parsed.root->kind != Node::Kind::Group) return {{}, {{"", "the file holds no group in braces"}}};
  return SaleReader(*parsed.root).read();
}

}  // namespace zentaro::tools
