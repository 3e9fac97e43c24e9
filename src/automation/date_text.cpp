// Dates in texts that people write: their own short date, a year-month-day date, a time of day.
#include <array>
#include <optional>
#include <string_view>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "platform/services.h"
#include "text/ascii.h"
#include "text/trimming.h"

namespace zentaro {
namespace {

constexpr std::u16string_view separators = u"/-.";
constexpr std::u16string_view yearFirst = u"ymd";

struct Number {
  int value = 0;
  int digits = 0;
};

class DateReader {
 public:
  explicit DateReader(std::u16string_view text) : rest_(text) {}

  bool atEnd() const { return rest_.empty(); }
  std::u16string_view rest() const { return rest_; }
  bool take(char16_t wanted) {
    if (!rest_.starts_with(wanted)) return false;
    rest_.remove_prefix(1);
    return true;
  }
  /// One of the separators, or 0.
  char16_t takeSeparator() {
    if (rest_.empty() || separators.find(rest_.front()) == separators.npos) return 0;
    const char16_t taken = rest_.front();
    rest_.remove_prefix(1);
    return taken;
  }
  std::optional<Number> takeNumber(int mostDigits) {
    Number number;
    for (; !rest_.empty() && isAsciiDigit(rest_.front()); rest_.remove_prefix(1)) {
      if (++number.digits > mostDigits) return std::nullopt;
      number.value = number.value * 10 + (rest_.front() - u'0');
    }
    if (number.digits == 0) return std::nullopt;
    return number;
  }

 private:
  std::u16string_view rest_;
};

/// The letters d, m and y in the order of the regional short date.
std::u16string regionalOrder() {
  std::u16string order;
  for (const char16_t character : services().regional->current().shortDate) {
    const char16_t letter = asciiLower(character);
    if (yearFirst.find(letter) != yearFirst.npos && order.find(letter) == order.npos) order += letter;
  }
  return order.size() == yearFirst.size() ? order : u"dmy";
}

bool setYear(Number number, bool isFirst, CalendarTime& parts) {
  constexpr int pivot = 30;
  if (number.digits == 4) {
    parts.year = number.value;
    return true;
  }
  if (number.digits != 2 || isFirst) return false;
  parts.year = number.value + (number.value < pivot ? 2000 : 1900);
  return true;
}

bool assign(const std::array<Number, 3>& numbers, std::u16string_view order, CalendarTime& parts) {
  for (std::size_t index = 0; index < numbers.size(); ++index) {
    const Number number = numbers[index];
    if (order[index] == u'y') {
      if (!setYear(number, index == 0, parts)) return false;
    } else if (number.digits > 2) {
      return false;
    } else {
      (order[index] == u'm' ? parts.month : parts.day) = number.value;
    }
  }
  return true;
}

bool readDay(DateReader& reader, CalendarTime& parts) {
  std::array<Number, 3> numbers;
  char16_t separator = 0;
  for (std::size_t index = 0; index < numbers.size(); ++index) {
    if (index == 1) separator = reader.takeSeparator();
    if (index == 2 && !reader.take(separator)) return false;
    const auto number = reader.takeNumber(4);
    if (!number || (index == 1 && separator == 0)) return false;
    numbers[index] = *number;
  }
  return assign(numbers, numbers[0].digits == 4 ? std::u16string(yearFirst) : regionalOrder(), parts);
}

bool readTime(DateReader& reader, CalendarTime& parts) {
  const auto hour = reader.takeNumber(2);
  if (!hour || !reader.take(u':')) return false;
  const auto minute = reader.takeNumber(2);
  if (!minute) return false;
  const auto second = reader.take(u':') ? reader.takeNumber(2) : Number{};
  if (!second) return false;
  parts.hour = hour->value;
  parts.minute = minute->value;
  parts.second = second->value;
  return reader.atEnd();
}

/// The time behind the day, which may be left out.
bool readRest(DateReader& reader, CalendarTime& parts) {
  if (reader.atEnd()) return true;
  if (reader.take(u'T')) return readTime(reader, parts);
  if (!reader.take(u' ')) return false;
  while (reader.take(u' ')) {
  }
  return readTime(reader, parts);
}

}  // namespace

std::optional<Date> textToDate(std::u16string_view text) {
  const std::u16string_view content = trimmed(text);
  CalendarTime parts;
  DateReader time(content), day(content);
  if (!readTime(time, parts)) {
    parts = {};
    if (!readDay(day, parts) || !readRest(day, parts)) return std::nullopt;
  }
  try {
    return dateOf(parts);
  } catch (const AutomationError&) {
    return std::nullopt;
  }
}

}  // namespace zentaro
