// The members of a sale.
#include "till/document/sale_file.h"

#include <algorithm>
#include <optional>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "base/terminal/language.h"
#include "till/document/plain_capitals.h"
#include "till/document/prices_with_tax.h"

namespace zentaro::till {

using terminal::say;

namespace {

// What the printer takes.
constexpr NumberRule priceRule{2, 0, 999'999'999'999};
constexpr NumberRule quantityRule{3, 1, 999'999'999};
constexpr NumberRule taxRule{2, 0, 9999};
constexpr NumberRule amountRule{2, 1, 9'999'999'999'999};
constexpr NumberRule totalRule{2, 0, 9'999'999'999'999};
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
  explicit SaleReader(const Node& root) {
    sale_.language = languageOf(root);
    document_.emplace(root, "", sale_.language, reading_.problems);
  }

  SaleReading read() && {
    readKind();
    const bool withTax = arePricesWithTax();
    readCustomer();
    readInvoice();
    readLines();
    readDiscounts();
    readPayments();
    readIgtf();
    readExtraLines();
    if (document_->find("total") != nullptr) sale_.total = document_->number("total", totalRule);
    if (!document_->flag("keepAccents")) makePlain();
    document_.reset();  // reports the unknown names
    if (withTax && reading_.problems.empty()) takeTaxOff(sale_);
    return std::move(reading_);
  }

 private:
  // The texts that the library reduces to 7-bit characters; the others it sends as they are.
  void makePlain() {
    sale_.customerName = withPlainCapitals(sale_.customerName);
    for (Line& line : sale_.lines) {
      std::string& text =
          std::holds_alternative<Item>(line) ? std::get<Item>(line).description : std::get<std::string>(line);
      text = withPlainCapitals(text);
    }
    for (std::string& text : sale_.extraLines) text = withPlainCapitals(text);
  }

  void readKind() {
    const std::string kind = document_->text("document", freeText);
    const bool isSpanish = sale_.language == FileLanguage::Spanish;
    sale_.isCreditNote =
        isSpanish ? kind == "nota de credito" || kind == "nota de crédito" : kind == "credit note";
    if (kind.empty() || sale_.isCreditNote || kind == (isSpanish ? "factura" : "invoice")) return;
    const std::string_view known =
        isSpanish ? R"("factura" / "nota de credito")" : R"("invoice" / "credit note")";
    document_->report("document", say("es \"{}\"; escriba {}", "is \"{}\"; write {}", {kind, known}));
  }

  bool arePricesWithTax() {
    if (document_->find("prices") == nullptr) return false;
    const std::string kind = document_->text("prices", freeText);
    const bool isSpanish = sale_.language == FileLanguage::Spanish;
    const std::string_view with = isSpanish ? "con impuesto" : "with tax";
    const std::string_view without = isSpanish ? "sin impuesto" : "without tax";
    if (!kind.empty() && kind != with && kind != without)
      document_->report("prices", say(R"(es "{}"; escriba "{}" / "{}")", R"(is "{}"; write "{}" / "{}")",
                                      {kind, with, without}));
    return kind == with;
  }

  void readCustomer() {
    const Node* node = document_->find("customer");
    if (node == nullptr) return;
    GroupReader customer = group(*node, document_->path("customer"));
    sale_.customerName = customer.text("name", nameRule);
    sale_.customerRif = customer.text("rif", rifRule);
  }

  void readInvoice() {
    const Node* node = document_->find("invoice");
    if (sale_.isCreditNote && node == nullptr)
      document_->report("invoice", say("falta; nombre la factura que la nota de crédito devuelve",
                                       "is missing; name the invoice that the credit note takes back"));
    if (!sale_.isCreditNote && node != nullptr)
      document_->report("invoice",
                        say("es de una nota de crédito; quítela, o haga del documento una nota de crédito",
                            "belongs to a credit note; remove it, or make the document a credit note"));
    if (node == nullptr) return;
    GroupReader invoice = group(*node, document_->path("invoice"));
    sale_.invoice = {invoice.text("number", freeText), invoice.text("serial", optionalText),
                     invoice.text("date", optionalText), invoice.text("time", optionalText)};
    checkMoment(invoice);
  }

  void checkMoment(GroupReader& invoice) {
    auto& [number, serial, date, time] = sale_.invoice;
    if (!date.empty() && (!hasForm(date, "0000-00-00") || !isDate(date)))
      invoice.report("date", say("\"{}\" no es una fecha; escriba año-mes-día: 2024-03-15",
                                 "\"{}\" is no date; write year-month-day: 2024-03-15", {date}));
    else if (!date.empty() && !date.starts_with("20"))  // the year is sent as two digits
      invoice.report("date",
                     say("\"{}\" no es de este siglo; la impresora lleva años de 2000 a 2099",
                         "\"{}\" is not of this century; the printer knows the years 2000 to 2099", {date}));
    if (time.empty()) return;
    const std::string whole = hasForm(time, "00:00") ? time + ":00" : time;
    if (!hasForm(whole, "00:00:00") || !isDate(whole))
      invoice.report("time", say("\"{}\" no es una hora; escriba horas y minutos: 14:05",
                                 "\"{}\" is no time; write hours and minutes: 14:05", {time}));
    time = whole;
    if (date.empty())
      invoice.report("time", say("está sin fecha; escriba la fecha también",
                                 "stands without a date; write the date too"));
  }

  void readLines() {
    const std::vector<Node>& lines = document_->list("lines");
    for (std::size_t i = 0; i < lines.size(); ++i) {
      GroupReader line = group(lines[i], indexed(document_->path("lines"), i));
      if (line.has("text"))
        sale_.lines.emplace_back(line.text("text", freeText));
      else
        sale_.lines.emplace_back(readItem(line));
    }
    const auto isItem = [](const Line& line) { return std::holds_alternative<Item>(line); };
    if (std::none_of(sale_.lines.begin(), sale_.lines.end(), isItem))
      document_->report("lines", say("no tiene ningún renglón con precio; el documento necesita uno",
                                     "holds no item; a document needs one at least"));
  }

  static Item readItem(GroupReader& line) {
    Item item;
    item.description = line.text("description", freeText);
    item.price = line.number("price", priceRule);
    if (line.find("quantity") != nullptr) item.quantity = line.number("quantity", quantityRule);
    item.tax = readRate(line, "tax");
    return item;
  }

  // 0.16 is how a program writes 16 % that goes on to multiply with it; here it would be 0.16 %.
  static Rate readRate(GroupReader& group, std::string_view name) {
    constexpr Rate onePerCent = 100;
    const Rate rate = group.number(name, taxRule);
    if (rate > 0 && rate < onePerCent)
      group.report(
          name, say("{} quiere decir {} %; si es {} %, escriba {}", "{} means {} %; if it is {} %, write {}",
                    {shortDecimalText(rate, 2), shortDecimalText(rate, 2), std::to_string(rate),
                     std::to_string(rate)}));
    return rate;
  }

  void readDiscounts() {
    const std::vector<Node>& discounts = document_->list("discounts");
    for (std::size_t i = 0; i < discounts.size(); ++i) {
      GroupReader discount = group(discounts[i], indexed(document_->path("discounts"), i));
      const Cents amount = discount.number("amount", amountRule);
      sale_.discounts.push_back({amount, discount.text("description", discountTextRule)});
    }
  }

  void readPayments() {
    const std::vector<Node>& payments = document_->list("payments");
    for (std::size_t i = 0; i < payments.size(); ++i) {
      GroupReader payment = group(payments[i], indexed(document_->path("payments"), i));
      const Cents amount = payment.number("amount", amountRule);
      sale_.payments.push_back({amount, payment.text("medium", optionalText)});
    }
    if (sale_.isCreditNote && !payments.empty())
      document_->report("payments", say("están en una nota de crédito, que no los admite; quítelos",
                                        "stand on a credit note, which takes none; remove them"));
  }

  void readIgtf() {
    const Node* node = document_->find("igtf");
    if (node == nullptr) return;
    GroupReader igtf = group(*node, "igtf");
    sale_.igtf.base = igtf.number("base", amountRule);
    if (igtf.find("rate") != nullptr) sale_.igtf.rate = readRate(igtf, "rate");
  }

  void readExtraLines() {
    const std::vector<Node>& lines = document_->list("extraLines");
    for (std::size_t i = 0; i < lines.size(); ++i)
      sale_.extraLines.push_back(
          readText(lines[i], indexed(document_->path("extraLines"), i), freeText, reading_.problems));
  }

  static FileLanguage languageOf(const Node& root) {
    const auto isThere = [&](std::string_view english) {
      const std::string_view spanish = memberName(english, FileLanguage::Spanish);
      return std::ranges::find(root.names, spanish) != root.names.end();
    };
    return isThere("document") || isThere("lines") ? FileLanguage::Spanish : FileLanguage::English;
  }

  GroupReader group(const Node& node, std::string path) {
    return {node, std::move(path), sale_.language, reading_.problems};
  }

  SaleReading reading_;
  Sale& sale_ = reading_.sale;
  std::optional<GroupReader> document_;
};

}  // namespace

SaleReading readSale(std::string_view json) {
  const ParsedNode parsed = parseNode(json);
  return parsed.root ? readSale(*parsed.root) : SaleReading{{}, {{"", parsed.problem}}};
}

SaleReading readSale(const Node& root) {
  if (root.kind == Node::Kind::Group) return SaleReader(root).read();
  return {{}, {{"", say("no hay un grupo entre llaves", "there is no group in braces")}}};
}

}  // namespace zentaro::till
