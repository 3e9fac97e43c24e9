// The content as one text, and its sum.
#include "till/document/content.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace zentaro::tools {

namespace {

// FNV-1a, 64 bits: it tells a shop's sales apart, and nobody gains by a collision.
class Digest {
 public:
  void add(std::string_view text) {
    for (const char character : text) addByte(static_cast<std::uint8_t>(character));
    addByte(0);  // "ab" and "c" are not "a" and "bc"
  }
  void add(std::int64_t number) { add(std::to_string(number)); }

  std::string text() const {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string hex;
    for (int shift = 60; shift >= 0; shift -= 4) hex += digits[(sum_ >> shift) & 0xF];
    return hex;
  }

 private:
  void addByte(std::uint8_t byte) { sum_ = (sum_ ^ byte) * 0x100000001B3; }

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

}  // namespace

std::string contentDigest(const Sale& sale) {
  Digest digest;
  digest.add(sale.isCreditNote ? "credit note" : "invoice");
  for (const std::string& text : {sale.customerName, sale.customerRif, sale.invoice.number,
                                  sale.invoice.serial, sale.invoice.date, sale.invoice.time})
    digest.add(text);
  for (const Line& line : sale.lines) addLine(digest, line);
  digest.add("discounts");
  for (const Discount& discount : sale.discounts) {
    digest.add(discount.amount);
    digest.add(discount.description);
  }
  digest.add("payments");
  for (const Payment& payment : sale.payments) {
    digest.add(payment.amount);
    digest.add(payment.medium);
  }
  digest.add(sale.igtf.base);
  digest.add(sale.igtf.rate);
  for (const std::string& text : sale.extraLines) digest.add(text);
  return digest.text();
}

}  // namespace zentaro::tools
