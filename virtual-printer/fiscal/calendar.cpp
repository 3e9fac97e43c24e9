// Between seconds and calendar fields.
#include "virtual-printer/fiscal/calendar.h"

#include <array>
#include <ctime>
#include <iomanip>
#include <locale>
#include <sstream>

namespace virtual_printer {
namespace {

std::tm fieldsOf(LocalTime time) {
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date{day};
  const std::chrono::hh_mm_ss clock{time - day};
  std::tm fields{};
  fields.tm_year = int{date.year()} - 1900;
  fields.tm_mon = static_cast<int>(unsigned{date.month()}) - 1;
  fields.tm_mday = static_cast<int>(unsigned{date.day()});
  fields.tm_hour = static_cast<int>(clock.hours().count());
  fields.tm_min = static_cast<int>(clock.minutes().count());
  fields.tm_sec = static_cast<int>(clock.seconds().count());
  return fields;
}

std::chrono::year_month_day dateOf(const std::tm& fields) {
  return {std::chrono::year{fields.tm_year + 1900},
          std::chrono::month{static_cast<unsigned>(fields.tm_mon + 1)},
          std::chrono::day{static_cast<unsigned>(fields.tm_mday)}};
}

}  // namespace

std::string written(LocalTime time, const char* pattern) {
  const std::tm fields = fieldsOf(time);
  std::array<char, 64> text{};
  return {text.data(), std::strftime(text.data(), text.size(), pattern, &fields)};
}

std::optional<LocalTime> fromStamp(const std::string& text) {
  std::tm fields{};
  std::istringstream stamp{text};
  stamp.imbue(std::locale::classic());
  stamp >> std::get_time(&fields, stampPattern);
  if (stamp.fail() || stamp.peek() != std::istringstream::traits_type::eof() || !dateOf(fields).ok())
    return std::nullopt;
  return fromFields(fields);
}

LocalTime fromFields(const std::tm& fields) {
  return std::chrono::local_days{dateOf(fields)} + std::chrono::hours{fields.tm_hour} +
         std::chrono::minutes{fields.tm_min} + std::chrono::seconds{fields.tm_sec};
}

}  // namespace virtual_printer
