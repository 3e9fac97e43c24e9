// The content as one text, and its sum.
#include "till/document/content.h"

#include <cstdint>
#include <string_view>

namespace zentaro::till {

namespace {

// FNV-1a, 64 bits: it tells a shop's sales apart, and nobody gains by a collision.
class Digest {
 public:
  explicit Digest(int rule) : rule_(rule) {}

  // The old rule ended each text with a zero and did not count what stands in a list, so that an amount and a
  // text could pass from a payment to the IGTF behind it.
  void add(std::string_view text) {
    if (rule_ > 1) addBytes(std::to_string(text.size()) + ":");
    addBytes(text);
    if (rule_ == 1) addBytes(std::string_view("\0", 1));
  }
  void add(std::int64_t number) { add(std::to_string(number)); }
  void count(std::size_t entries) {
    if (rule_ > 1) add(std::to_string(entries));
  }

  std::string text() const {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = std::to_string(rule_) + ":";
    for (int shift = 60; shift >= 0; shift -= 4) text += digits[(sum_ >> shift) & 0xF];
    return text;
  }

 private:
  void addBytes(std::string_view bytes) {
    for (const char byte : bytes) sum_ = (sum_ ^ static_cast<std::uint8_t>(byte)) * 0x100000001B3;
  }

  int rule_;
  std::uint64_t sum_ = 0xCBF29CE484222325;
};

void addLine(Digest& digest, const Line& line) {
  if (const Item* item = std::get_if<Item>(&line)) {
    digest.add("item");
    digest.add(item->description);
    for (const std::int64_t number : {item->price, item->quantity, item->tax}) digest.add(number);
  } else {
    digest.add("text");
    digest.add(std::get<std::string>(line));
  }
}

std::string digestBy(int rule, const Sale& sale) {
  Digest digest(rule);
  digest.add(sale.isCreditNote ? "credit note" : "invoice");
  for (const std::string& text : {sale.customerName, sale.customerRif, sale.invoice.number,
                                  sale.invoice.serial, sale.invoice.date, sale.invoice.time})
    digest.add(text);
  digest.count(sale.lines.size());
  for (const Line& line : sale.lines) addLine(digest, line);
  digest.add("discounts");
  digest.count(sale.discounts.size());
  for (const Discount& discount : sale.discounts) {
    digest.add(discount.amount);
    digest.add(discount.description);
  }
  digest.add("payments");
  digest.count(sale.payments.size());
  for (const Payment& payment : sale.payments) {
    digest.add(payment.amount);
    digest.add(payment.medium);
  }
  digest.add(sale.igtf.base);
  digest.add(sale.igtf.rate);
  for (const std::string& text : sale.extraLines) digest.add(text);
  return digest.text();
}

}  // namespace

std::string contentDigest(const Sale& sale) { return digestBy(2, sale); }
std::string oldContentDigest(const Sale& sale) { return digestBy(1, sale); }

}  // namespace zentaro::till
