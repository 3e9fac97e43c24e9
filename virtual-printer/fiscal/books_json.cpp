// Each record names its members once; the same list writes and reads them.
#include "fiscal/books_json.h"

#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "fiscal/calendar.h"

namespace printer {
namespace {

using Json = nlohmann::ordered_json;

constexpr int formatVersion = 1;
// Far above what a printer can sell, far below what sums can hold.
constexpr Cents largestTotal = 1'000'000'000'000'000'000;
constexpr Cents largestOffset = 100LL * 366 * 24 * 3600;
constexpr std::array<const char*, 3> kindNames{"invoice", "creditNote", "nonFiscal"};

template <class Visit>
void members(Visit&& visit, Counters& counters) {
  visit("invoice", counters.invoice);
  visit("creditNote", counters.creditNote);
  visit("nonFiscal", counters.nonFiscal);
  visit("z", counters.z);
}

template <class Visit>
void members(Visit&& visit, Figures& figures) {
  visit("bases", figures.bases);
  visit("taxes", figures.taxes);
  visit("igtfBase", figures.igtfBase);
  visit("igtf", figures.igtf);
}

template <class Visit>
void members(Visit&& visit, DayTotals& day) {
  visit("rates", day.rates.rates);
  visit("sales", day.sales);
  visit("returns", day.returns);
  visit("discounts", day.discounts);
  visit("discountTax", day.discountTax);
  visit("invoices", day.invoices);
  visit("creditNotes", day.creditNotes);
  visit("nonFiscals", day.nonFiscals);
  visit("cancelled", day.cancelled);
}

template <class Visit>
void members(Visit&& visit, LastInvoice& last) {
  visit("number", last.number);
  visit("closedAt", last.closedAt);
}

template <class Visit>
void members(Visit&& visit, ZRecord& record) {
  visit("number", record.number);
  visit("closedAt", record.closedAt);
  visit("totals", record.totals);
  visit("lastInvoice", record.lastInvoice);
}

template <class Visit>
void members(Visit&& visit, OpenMark& mark) {
  visit("kind", mark.kind);
  visit("number", mark.number);
}

template <class Visit>
void members(Visit&& visit, Books& books) {
  visit("counters", books.counters);
  visit("day", books.day);
  visit("lastInvoice", books.lastInvoice);
  visit("zRecords", books.zRecords);
  visit("header", books.header);
  visit("footer", books.footer);
  visit("clockOffset", books.clockOffset);
  visit("open", books.open);
}

// Takes references that could be changed only because one list of members serves both directions.
struct Writer {
  Json& to;

  template <class Value>
  void operator()(const char* key, Value& value) const {
    Writer{to[key]}.write(value);
  }

  void write(int& value) const { to = value; }
  void write(Cents& value) const { to = value; }
  void write(std::string& value) const { to = value; }
  void write(LocalTime& value) const { to = written(value, stampPattern); }
  void write(std::chrono::seconds& value) const { to = value.count(); }
  void write(DocumentKind& value) const { to = kindNames[static_cast<std::size_t>(value)]; }
  template <class Value, std::size_t count>
  void write(std::array<Value, count>& values) const {
    to = Json::array();
    for (Value& value : values) Writer{to.emplace_back()}.write(value);
  }
  template <class Value>
  void write(std::vector<Value>& values) const {
    to = Json::array();
    for (Value& value : values) Writer{to.emplace_back()}.write(value);
  }
  template <class Value>
  void write(std::optional<Value>& value) const {
    if (value) write(*value);
  }
  template <class Record>
  void write(Record& record) const {
    members(*this, record);
  }
};

struct Reader {
  const Json& from;
  std::string path;

  template <class Value>
  void operator()(const char* key, Value& value) const {
    if (!from.is_object() || !from.contains(key)) fail(std::string{key} + " is missing");
    Reader{from[key], path.empty() ? key : path + "." + key}.read(value);
  }

  [[noreturn]] void fail(const std::string& what) const {
    throw std::runtime_error{path.empty() ? what : path + ": " + what};
  }

  Cents whole(Cents least, Cents most) const {
    if (!from.is_number_integer()) fail("a whole number is expected");
    const bool isTooLarge =
        from.is_number_unsigned() && from.get<std::uint64_t>() > static_cast<std::uint64_t>(most);
    if (isTooLarge || from.get<Cents>() < least) fail("the number is out of range");
    return from.get<Cents>();
  }

  void read(int& value) const { value = static_cast<int>(whole(0, std::numeric_limits<int>::max())); }
  void read(Cents& value) const { value = whole(0, largestTotal); }
  void read(std::string& value) const {
    if (!from.is_string()) fail("a text is expected");
    value = from.get<std::string>();
  }
  void read(LocalTime& value) const {
    std::string text;
    read(text);
    const auto time = fromStamp(text);
    if (!time) fail("a time like 2026-01-31T14:05:00 is expected");
    value = *time;
  }
  void read(std::chrono::seconds& value) const {
    value = std::chrono::seconds{whole(-largestOffset, largestOffset)};
  }
  void read(DocumentKind& value) const {
    std::string name;
    read(name);
    const auto* found = std::find(kindNames.begin(), kindNames.end(), name);
    if (found == kindNames.end()) fail("invoice, creditNote or nonFiscal is expected");
    value = static_cast<DocumentKind>(found - kindNames.begin());
  }
  template <class Value, std::size_t count>
  void read(std::array<Value, count>& values) const {
    if (!from.is_array() || from.size() != count) fail("a list of " + std::to_string(count) + " is expected");
    for (std::size_t at = 0; at < count; ++at) element(at).read(values[at]);
  }
  template <class Value>
  void read(std::vector<Value>& values) const {
    if (!from.is_array()) fail("a list is expected");
    values.resize(from.size());
    for (std::size_t at = 0; at < values.size(); ++at) element(at).read(values[at]);
  }
  template <class Value>
  void read(std::optional<Value>& value) const {
    if (!from.is_null()) read(value.emplace());
  }
  template <class Record>
  void read(Record& record) const {
    members(*this, record);
  }

  Reader element(std::size_t at) const { return {from[at], path + "[" + std::to_string(at) + "]"}; }
};

}  // namespace

std::string toJson(const Books& books) {
  Json json{{"format", formatVersion}};
  Books copy = books;
  Writer{json}.write(copy);
  return json.dump(1) + "\n";
}

Books booksFromJson(const std::string& text) {
  const Json json = Json::parse(text, nullptr, false);
  if (json.is_discarded()) throw std::runtime_error{"it is not JSON"};
  const Reader reader{json, {}};
  int format = 0;
  reader("format", format);
  if (format != formatVersion) throw std::runtime_error{"format " + std::to_string(format) + " is not known"};
  Books books;
  reader.read(books);
  return books;
}

}  // namespace printer
