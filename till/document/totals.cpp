// The arithmetic of a document, and the checks that need it.
#include "till/document/totals.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <optional>
#include <span>

#include "base/terminal/language.h"

namespace zentaro::till {

using terminal::say;

namespace {

constexpr Cents largestAmount = 9'999'999'999'999;
constexpr std::size_t places = 4;  // the exempt base, then those of three rates

Cents percentOf(Cents base, Rate rate) { return roundedHalfUp(base, rate, 10'000); }

class Reckoning {
 public:
  Reckoning(FileLanguage language, Problems& problems) : language_(language), problems_(problems) {}

  std::string member(std::string_view english) const { return std::string(memberName(english, language_)); }

  void add(const Item& item, const std::string& path) {
    const Cents amount = amountOf(item);
    const std::optional<std::size_t> place = placeOf(item.tax);
    if (!place)
      report(path + "." + member("tax"), say("es una cuarta tasa; un documento admite tres",
                                             "is a fourth tax rate; a document has room for three"));
    else if (net() + amount > largestAmount)
      report(path, say("hace el documento mayor que {}", "makes the document larger than {}",
                       {centsText(largestAmount)}));
    else
      bases_[*place] += amount;
  }

  void take(Cents discount, const std::string& path) {
    if (discount > net())
      report(path + "." + member("amount"),
             say("es más que los {} que quedan sin impuesto", "is more than the {} that are left without tax",
                 {centsText(net())}));
    else
      share(discount);
  }

  Cents net() const { return std::accumulate(bases_.begin(), bases_.end(), Cents{0}); }

  Cents tax() const {
    Cents tax = 0;
    for (std::size_t place = 1; place < places; ++place) tax += percentOf(bases_[place], rates_[place]);
    return tax;
  }

 private:
  std::optional<std::size_t> placeOf(Rate rate) {
    constexpr std::array<Rate, places> preferred{0, 1600, 800, 3100};
    if (const std::size_t known = indexOf(rates_, rate); known < places) return known;
    std::size_t free = indexOf(preferred, rate);
    if (free == places || rates_[free] != 0) free = 1 + indexOf(std::span(rates_).subspan<1>(), 0);
    if (free == places) return std::nullopt;
    rates_[free] = rate;
    return free;
  }

  /// The number of rates when it is not among them.
  static std::size_t indexOf(std::span<const Rate> rates, Rate rate) {
    return static_cast<std::size_t>(std::find(rates.begin(), rates.end(), rate) - rates.begin());
  }

  void share(Cents discount) {
    const Cents whole = net();
    std::array<Quotient, places> shares;
    std::transform(bases_.begin(), bases_.end(), shares.begin(),
                   [&](Cents base) { return multiplyDivide(base, discount, whole); });
    std::array<std::size_t, places> order{0, 1, 2, 3};
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return shares[a].remainder > shares[b].remainder; });
    for (std::size_t place = 0; place < places; ++place) {
      bases_[place] -= shares[place].whole;
      discount -= shares[place].whole;
    }
    for (std::size_t i = 0; discount > 0; ++i, --discount) --bases_[order[i]];
  }

  void report(std::string path, std::string text) { problems_.push_back({std::move(path), std::move(text)}); }

  FileLanguage language_;
  Problems& problems_;
  std::array<Rate, places> rates_{};  // [0] is the exempt place; a 0 behind it is free
  std::array<Cents, places> bases_{};
};

/// One cent for each amount that was rounded.
Cents toleranceOf(const Sale& sale) {
  const auto isItem = [](const Line& line) { return std::holds_alternative<Item>(line); };
  return std::ranges::count_if(sale.lines, isItem) + static_cast<Cents>(sale.discounts.size());
}

std::string bothSums(const Sale& sale, const Totals& totals) {
  return say(
      "suman {} con impuesto, pero se imprime {} (neto {}, impuesto {})",
      "add up to {} with tax, but {} is printed (net {}, tax {})",
      {centsText(*sale.sumWithTax), centsText(totals.total()), centsText(totals.net), centsText(totals.tax)});
}

void compareSums(const Sale& sale, const Totals& totals, Problems& problems) {
  if (sale.total && *sale.total != totals.total())
    problems.push_back({"total", say("es {}, pero se imprimiría {} (neto {}, impuesto {}; el IGTF va aparte)",
                                     "is {}, but {} would be printed (net {}, tax {}; the IGTF is apart)",
                                     {centsText(*sale.total), centsText(totals.total()),
                                      centsText(totals.net), centsText(totals.tax)})});
  if (sale.total || !sale.sumWithTax) return;
  if (std::abs(*sale.sumWithTax - totals.total()) > toleranceOf(sale))
    problems.push_back(
        {std::string(memberName("prices", sale.language)),
         bothSums(sale, totals) + say("; escriba los renglones con cantidad 1, o el total que vale",
                                      "; write the lines with quantity 1, or the total that holds")});
}

Cents addPayments(const Sale& sale, const Totals& totals, Problems& problems) {
  const std::string_view path = memberName("payments", sale.language);
  const Cents enough = totals.total() + percentOf(totals.total(), sale.igtf.rate);
  Cents paid = 0;
  for (std::size_t i = 0; i < sale.payments.size(); ++i) {
    if (paid >= enough) {
      problems.push_back({indexed(path, i), say("llega cuando todo está pagado; quítelo",
                                                "comes when everything is paid; remove it")});
      return paid;
    }
    paid += sale.payments[i].amount;
  }
  if (!sale.isCreditNote && paid < totals.due())
    problems.push_back(
        {std::string(path), say("suman {}, pero se deben {} (total {}, IGTF {}); faltan {}",
                                "are {} together, but {} are due (total {}, IGTF {}); {} are missing",
                                {centsText(paid), centsText(totals.due()), centsText(totals.total()),
                                 centsText(totals.igtf), centsText(totals.due() - paid)})});
  return paid;
}

}  // namespace

Cents amountOf(const Item& item) { return roundedHalfUp(item.quantity, item.price, 1000); }

Totals reckon(const Sale& sale, Problems& problems) {
  Reckoning reckoning(sale.language, problems);
  for (std::size_t i = 0; i < sale.lines.size(); ++i)
    if (const Item* item = std::get_if<Item>(&sale.lines[i]))
      reckoning.add(*item, indexed(reckoning.member("lines"), i));
  for (std::size_t i = 0; i < sale.discounts.size(); ++i)
    reckoning.take(sale.discounts[i].amount, indexed(reckoning.member("discounts"), i));

  Totals totals{reckoning.net(), reckoning.tax()};
  if (problems.empty()) compareSums(sale, totals, problems);
  totals.igtf = percentOf(sale.igtf.base, sale.igtf.rate);
  if (sale.igtf.base > totals.total())
    problems.push_back({"igtf.base", say("es más que el total de {}", "is more than the total of {}",
                                         {centsText(totals.total())})});
  totals.paid = addPayments(sale, totals, problems);
  return totals;
}

std::optional<Problem> sumWarning(const Sale& sale, const Totals& totals) {
  if (sale.total || !sale.sumWithTax || *sale.sumWithTax == totals.total()) return std::nullopt;
  return Problem{std::string(memberName("prices", sale.language)), bothSums(sale, totals)};
}

}  // namespace zentaro::till
