// Field texts to values.
#include "virtual-printer/device/arguments.h"

#include <algorithm>
#include <array>

#include "virtual-printer/wire/codepage.h"

namespace virtual_printer {
namespace {

constexpr std::size_t mostDigits = 15;

bool isDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char byte) { return byte >= '0' && byte <= '9'; });
}

// Three numbers of two digits each.
std::array<unsigned, 3> pairs(const std::string& text) {
  refuseIf(text.size() != 6 || !isDigits(text), Refusal::BadDate);
  std::array<unsigned, 3> values{};
  for (std::size_t at = 0; at < values.size(); ++at)
    values[at] = static_cast<unsigned>((text[2 * at] - '0') * 10 + (text[2 * at + 1] - '0'));
  return values;
}

}  // namespace

std::string Arguments::raw(std::size_t index) const {
  return index < command_.fields.size() ? command_.fields[index] : std::string{};
}

std::string Arguments::text(std::size_t index) const { return utf8FromWire(raw(index)); }

std::int64_t Arguments::number(std::size_t index) const {
  const std::string digits = raw(index);
  refuseIf(digits.empty() || digits.size() > mostDigits || !isDigits(digits), Refusal::BadField);
  return std::stoll(digits);
}

Cents Arguments::amount(std::size_t index) const {
  const std::string digits = raw(index);
  refuseIf(digits.size() > 1 && digits[0] == '-' && isDigits(digits.substr(1)), Refusal::AmountOutOfRange);
  return number(index);
}

Rate Arguments::rate(std::size_t index) const {
  const Cents value = amount(index);
  refuseIf(value > largestRate, Refusal::AmountOutOfRange);
  return static_cast<Rate>(value);
}

std::chrono::local_days Arguments::date(std::size_t index) const {
  const auto [year, month, day] = pairs(raw(index));
  const std::chrono::year_month_day date{std::chrono::year{static_cast<int>(2000 + year)},
                                         std::chrono::month{month}, std::chrono::day{day}};
  refuseIf(!date.ok(), Refusal::BadDate);
  return std::chrono::local_days{date};
}

std::chrono::seconds Arguments::time(std::size_t index) const {
  const auto [hours, minutes, seconds] = pairs(raw(index));
  refuseIf(hours > 23 || minutes > 59 || seconds > 59, Refusal::BadDate);
  return std::chrono::hours{hours} + std::chrono::minutes{minutes} + std::chrono::seconds{seconds};
}

}  // namespace virtual_printer
