// Each record names its members once; the same list writes and reads them.
#include "virtual-printer/fiscal/books_json.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "base/terminal/language.h"
#include "virtual-printer/fiscal/calendar.h"
#include "virtual-printer/wire/frame.h"

namespace virtual_printer {
namespace {

using Json = nlohmann::ordered_json;
using zentaro::terminal::say;

constexpr int formatVersion = 1;
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
void members(Visit&& visit, Account& books) {
  visit("counters", books.counters);
  visit("day", books.day);
  visit("lastInvoice", books.lastInvoice);
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
  void write(std::optional<Value>& value) const {
    if (value) write(*value);
  }
  template <class Record>
  void write(Record& record) const {
    members(*this, record);
  }
};

// Where it stands is put into words only when something is wrong there.
struct Reader {
  const Json& from;
  const Reader* above = nullptr;
  const char* key = nullptr;  // of a member, else it is an element of a list
  std::size_t at = 0;

  template <class Value>
  void operator()(const char* name, Value& value) const {
    const auto found = from.find(name);
    if (found == from.end()) fail(say("falta {}", "{} is missing", {name}));
    Reader{*found, this, name}.read(value);
  }

  std::string path() const {
    if (above == nullptr) return {};
    const std::string before = above->path();
    if (key == nullptr) return before + "[" + std::to_string(at) + "]";
    return before.empty() ? key : before + "." + key;
  }
  [[noreturn]] void fail(std::string_view what) const {
    const std::string place = path();
    throw std::runtime_error(place.empty() ? std::string{what} : place + ": " + std::string{what});
  }

  Cents whole(Cents least, Cents most) const {
    if (!from.is_number_integer()) fail(say("se espera un número entero", "a whole number is expected"));
    const bool isTooLarge =
        from.is_number_unsigned() && from.get<std::uint64_t>() > static_cast<std::uint64_t>(most);
    if (isTooLarge || from.get<Cents>() < least)
      fail(say("el número está fuera de rango", "the number is out of range"));
    return from.get<Cents>();
  }

  void read(int& value) const { value = static_cast<int>(whole(0, largestNumber)); }
  void read(Cents& value) const { value = whole(0, largestTotal); }
  void read(std::string& value) const {
    if (!from.is_string()) fail(say("se espera un texto", "a text is expected"));
    value = from.get<std::string>();
  }
  void read(LocalTime& value) const {
    std::string text;
    read(text);
    const auto time = fromStamp(text);
    if (!time)
      fail(say("se espera una hora como 2026-01-31T14:05:00", "a time like 2026-01-31T14:05:00 is expected"));
    value = *time;
  }
  void read(std::chrono::seconds& value) const {
    value = std::chrono::seconds{whole(-largestOffset, largestOffset)};
  }
  void read(DocumentKind& value) const {
    std::string name;
    read(name);
    const auto* found = std::find(kindNames.begin(), kindNames.end(), name);
    if (found == kindNames.end())
      fail(say("se espera invoice, creditNote o nonFiscal", "invoice, creditNote or nonFiscal is expected"));
    value = static_cast<DocumentKind>(found - kindNames.begin());
  }
  template <class Value, std::size_t count>
  void read(std::array<Value, count>& values) const {
    if (!from.is_array() || from.size() != count)
      fail(say("se espera una lista de {}", "a list of {} is expected", {std::to_string(count)}));
    for (std::size_t index = 0; index < count; ++index) element(index).read(values[index]);
  }
  void read(std::vector<ZRecord>& records) const {
    if (!from.is_array()) fail(say("se espera una lista", "a list is expected"));
    for (std::size_t index = 0; index < from.size(); ++index) element(index).read(records.emplace_back());
  }
  template <class Value>
  void read(std::optional<Value>& value) const {
    if (!from.is_null()) read(value.emplace());
  }
  template <class Record>
  void read(Record& record) const {
    members(*this, record);
  }

  Reader element(std::size_t index) const { return {from[index], this, nullptr, index}; }
};

constexpr std::uint64_t emptySum = 14695981039346656037U;

// FNV-1a: it sees a change by hand, and is no protection against one who means to deceive.
std::uint64_t addToSum(std::uint64_t sum, const std::string& text) {
  for (const char byte : text) sum = (sum ^ static_cast<unsigned char>(byte)) * 1099511628211U;
  return sum;
}

std::string digitsOf(std::uint64_t sum) {
  return hexadecimal(static_cast<unsigned>(sum >> 32), 8) + hexadecimal(static_cast<unsigned>(sum), 8);
}

// Nothing of the books is nested deeper; what is would use up the stack where it is looked through
// and where it is destroyed.
bool isShallow(int depth, Json::parse_event_t, Json&) {
  constexpr int deepest = 8;
  if (depth > deepest) throw std::runtime_error(say("tiene demasiados niveles", "it is nested too deeply"));
  return true;
}

Json parsed(const std::string& text) {
  try {
    return Json::parse(text, isShallow);
  } catch (const Json::parse_error& error) {
    const std::size_t end = std::min(error.byte, text.size());
    const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), '\n');
    throw std::runtime_error(say("no es JSON, por un error en la línea {}",
                                 "it is not JSON, by a mistake in line {}", {std::to_string(line)}));
  } catch (const Json::out_of_range&) {
    throw std::runtime_error(say("tiene un número demasiado grande", "it has a number that is too large"));
  }
}

// Over the records and then over the other members, each without the blanks between its parts.
std::string sumOf(const Json& json) {
  std::uint64_t sum = emptySum;
  if (json.contains("zRecords"))
    for (const Json& record : json["zRecords"]) sum = addToSum(sum, record.dump());
  Json rest;
  for (const auto& [key, value] : json.items())
    if (key != "zRecords" && key != "checksum") rest[key] = value;
  return digitsOf(addToSum(sum, rest.dump()));
}

}  // namespace

std::string toJson(const Books& books) {
  std::uint64_t sum = emptySum;
  std::string lines;
  for (ZRecord record : books.zRecords) {
    Json json;
    Writer{json}.write(record);
    const std::string line = json.dump();
    sum = addToSum(sum, line);
    lines += (lines.empty() ? "  " : ",\n  ") + line;
  }
  Json rest{{"format", formatVersion}};
  Account account = books;
  Writer{rest}.write(account);
  rest["checksum"] = digitsOf(addToSum(sum, rest.dump()));
  std::string text = rest.dump(1);
  text.resize(text.size() - 2);  // the end of the line and of the object
  return text + ",\n \"zRecords\": [\n" + lines + "\n ]\n}\n";
}

Books booksFromJson(const std::string& text) {
  const Json json = parsed(text);
  if (json.is_object() && json.contains("checksum") && json["checksum"] != sumOf(json))
    throw std::runtime_error(
        say("cambió desde que se escribió; quite el miembro checksum para aceptarlo",
            "it was changed since it was written; remove the member checksum to accept it"));
  const Reader reader{json};
  int format = 0;
  reader("format", format);
  if (format != formatVersion)
    throw std::runtime_error(
        say("el formato {} no se conoce", "format {} is not known", {std::to_string(format)}));
  Books books;
  reader.read(books);
  reader("zRecords", books.zRecords);
  return books;
}

}  // namespace virtual_printer
