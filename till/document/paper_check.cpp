// Each text as the library will send it, compared with what the file says.
#include "till/document/paper_check.h"

#include <algorithm>
#include <array>

#include "base/terminal/language.h"
#include "documents/encoding.h"
#include "text/ascii.h"
#include "text/unicode.h"
#include "till/document/totals.h"

namespace zentaro::till {

using terminal::say;

namespace {

constexpr Rate usualIgtfRate = 300;

std::string inQuotes(std::u16string_view text) { return "\"" + utf8(text) + "\""; }

std::u16string withoutBlanks(std::u16string_view text) {
  const std::size_t first = text.find_first_not_of(u' ');
  if (first == std::u16string_view::npos) return {};
  return std::u16string(text.substr(first, text.find_last_not_of(u' ') + 1 - first));
}

class PaperCheck {
 public:
  explicit PaperCheck(FileLanguage language) : language_(language) {}

  void check(const std::string& path, const std::string& text, int longest) {
    const std::u16string whole = utf16(text), printed = CleanText(text, longest);
    const auto kept = static_cast<std::size_t>(longest);
    if (withoutBlanks(whole).size() > kept) {
      excess_ = std::max(excess_, withoutBlanks(whole).size() - kept);
      if (++cuts_ <= cutsShown)
        warn(path, say("se corta a {} caracteres: {}", "is cut to {} characters: {}",
                       {std::to_string(longest), inQuotes(printed)}));
    }
    if (withoutBlanks(whole).size() <= kept && isMaimed(withoutBlanks(whole), printed))
      warn(path, say("sale como {}", "prints as {}", {inQuotes(printed)}));
  }

  void warn(std::string path, std::string text) { warnings_.push_back({std::move(path), std::move(text)}); }
  void add(Problems warnings) {
    for (Problem& warning : warnings) warnings_.push_back(std::move(warning));
  }

  /// "lines[2].text" in the language of the file.
  std::string path(std::string_view list, std::size_t index, std::string_view member) const {
    return indexed(name(list), index) + "." + name(member);
  }
  std::string name(std::string_view english) const { return std::string(memberName(english, language_)); }

  /// What is cut, once, with its remedy.
  void sumUp(int descriptionLength) {
    if (cuts_ == 0) return;
    const std::string more = std::to_string(cuts_ - std::min(cuts_, cutsShown));
    const std::string remedy = say(
        "acórtelos, o deje más lugar: zentaro settings set LenDescripcionZT {} (ahora {})",
        "shorten them, or give them more room: zentaro settings set LenDescripcionZT {} (now {})",
        {std::to_string(descriptionLength + static_cast<int>(excess_)), std::to_string(descriptionLength)});
    warn(name("lines"),
         (cuts_ > cutsShown ? say("{} textos más se cortan; ", "{} more texts are cut; ", {more}) : "") +
             remedy);
  }

  Problems take() && { return std::move(warnings_); }

 private:
  // An accent that is dropped maims nothing, a full stop instead of a letter does.
  static bool isMaimed(std::u16string_view whole, std::u16string_view printed) {
    for (std::size_t i = 0; i < printed.size() && i < whole.size(); ++i)
      if (printed[i] != whole[i] && (printed[i] == u'.' || printed[i] == u'\'')) return true;
    return false;
  }

  static constexpr std::size_t cutsShown = 3;

  FileLanguage language_;
  Problems warnings_;
  std::size_t cuts_ = 0, excess_ = 0;
};

// The printer knows its own rate, whatever the file says.
Problems igtfWarnings(const Sale& sale) {
  if (sale.igtf.rate == usualIgtfRate || sale.igtf.base == 0) return {};
  Sale usual = sale;
  usual.igtf.rate = usualIgtfRate;
  Problems warnings;
  reckon(usual, warnings);
  for (Problem& warning : warnings)
    warning.text = say("con la tasa de IGTF usual, 3 %: ", "with the usual IGTF rate, 3 %: ") + warning.text;
  warnings.push_back({"igtf." + std::string(memberName("rate", sale.language)),
                      say("es la de la impresora la que vale; el vuelto puede ser otro",
                          "is not the usual one; the printer goes by its own, and the change may differ")});
  return warnings;
}

// Whoever takes it off one line means another price; the printer takes it off them all.
void checkDiscounts(const Sale& sale, PaperCheck& paper) {
  Cents largest = 0;
  for (const Line& line : sale.lines)
    if (const Item* item = std::get_if<Item>(&line)) largest = std::max(largest, amountOf(*item));
  for (std::size_t i = 0; i < sale.discounts.size(); ++i)
    if (sale.discounts[i].amount > largest)
      paper.warn(
          paper.path("discounts", i, "amount"),
          say("{} es más que el renglón mayor, {}; se descuenta de todo el documento: si es de un renglón, "
              "baje su precio",
              "{} is more than the largest line, {}; it is taken off the whole document: if it belongs to a "
              "line, lower its price",
              {centsText(sale.discounts[i].amount), centsText(largest)}));
}

int checkDigitOf(std::string_view letter, std::string_view digits) {
  constexpr std::array<int, 8> weights{3, 2, 7, 6, 5, 4, 3, 2};
  int sum = 4 * (static_cast<int>(std::string_view("VEJPG").find(letter)) + 1);
  for (std::size_t i = 0; i < weights.size(); ++i) sum += weights[i] * (digits[i] - '0');
  const int digit = 11 - sum % 11;
  return digit > 9 ? 0 : digit;
}

}  // namespace

std::string rifDoubt(std::string_view rif) {
  constexpr std::size_t withoutCheckDigit = 8;
  std::string digits;
  for (const char character : rif.substr(std::min<std::size_t>(1, rif.size())))
    if (character != '-' && character != '.') digits += character;
  const bool hasLetter = !rif.empty() && std::string_view("VEJPG").find(rif[0]) != std::string_view::npos;
  const bool hasDigits = digits.find_first_not_of("0123456789") == std::string::npos && digits.size() >= 6 &&
                         digits.size() <= withoutCheckDigit + 1;
  if (!hasLetter || !hasDigits)
    return say("no parece un RIF ni una cédula; se espera J-12345678-9 o V-12345678",
               "looks like no RIF and no identity card; J-12345678-9 or V-12345678 is usual");
  if (digits.size() <= withoutCheckDigit) return {};
  const int expected = checkDigitOf(rif.substr(0, 1), digits);
  if (digits.back() - '0' == expected) return {};
  return say("el dígito de control debería ser {}", "the check digit should be {}",
             {std::to_string(expected)});
}

Problems paperWarnings(const Sale& sale, int descriptionLength) {
  constexpr int nameLength = 40, rifLength = 14, extraLineMore = 14, usualLength = 20;
  const int itemLength = descriptionLength == 0 ? usualLength : descriptionLength;
  PaperCheck paper(sale.language);
  paper.check(paper.name("customer") + "." + paper.name("name"), sale.customerName, nameLength);
  if (!sale.customerRif.empty()) {
    const std::string path = paper.name("customer") + ".rif";
    paper.check(path, sale.customerRif, rifLength);
    if (std::string doubt = rifDoubt(sale.customerRif); !doubt.empty()) paper.warn(path, std::move(doubt));
  }
  for (std::size_t i = 0; i < sale.lines.size(); ++i) {
    if (const Item* item = std::get_if<Item>(&sale.lines[i]))
      paper.check(paper.path("lines", i, "description"), item->description, itemLength);
    else
      paper.check(paper.path("lines", i, "text"), std::get<std::string>(sale.lines[i]),
                  descriptionLength + extraLineMore);
  }
  for (std::size_t i = 0; i < sale.extraLines.size(); ++i)
    paper.check(indexed(paper.name("extraLines"), i), sale.extraLines[i], descriptionLength + extraLineMore);
  paper.sumUp(itemLength);
  checkDiscounts(sale, paper);
  paper.add(igtfWarnings(sale));
  Problems none;
  if (auto warning = sumWarning(sale, reckon(sale, none))) paper.add({std::move(*warning)});
  return std::move(paper).take();
}

}  // namespace zentaro::till
