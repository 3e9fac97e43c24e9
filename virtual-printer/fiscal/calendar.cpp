// Between seconds and calendar fields.
#include "virtual-printer/fiscal/calendar.h"

#include <array>
#include <ctime>

namespace printer {
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

}  // namespace

std::string written(LocalTime time, const char* pattern) {
  const std::tm fields = fieldsOf(time);
  std::array<char, 64> text{};
  return {text.data(), std::strftime(text.data(), text.size(), pattern, &fields)};
}

std::optional<LocalTime> fromStamp(const std::string& text) {
  std::tm fields{};
  const char* end = ::strptime(text.c_str(), stampPattern, &fields);
  if (end == nullptr || *end != '\0') return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year{fields.tm_year + 1900},
                                         std::chrono::month{static_cast<unsigned>(fields.tm_mon + 1)},
                                         std::chrono::day{static_cast<unsigned>(fields.tm_mday)}};
  if (!date.ok()) return std::nullopt;
  return std::chrono::local_days{date} + std::chrono::hours{fields.tm_hour} +
         std::chrono::minutes{fields.tm_min} + std::chrono::seconds{fields.tm_sec};
}

}  // namespace printer
