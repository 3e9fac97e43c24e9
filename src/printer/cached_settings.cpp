// Reading and converting the cached settings.
#include "printer/cached_settings.h"

#include <string>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "automation/numbers.h"
#include "platform/setting_keys.h"

namespace zentaro {

namespace {

/// The conversion's result, or `fallback` when it fails.
template <class Conversion>
std::int16_t convertOr(std::int16_t fallback, Conversion conversion) {
  try {
    return conversion();
  } catch (const AutomationError&) {
    return fallback;
  }
}

std::int16_t leadingInt16(const SettingKey& key, std::int16_t fallback) {
  return convertOr(fallback, [&] { return roundToInt16(leadingNumber(readSetting(key))); });
}

}  // namespace

std::int16_t CachedSettings::timeOut() {
  if (timeOut_ == 0) timeOut_ = convertOr(12, [] { return toInt16(readSetting(settingTimeOut)); });
  return timeOut_;
}

std::int16_t CachedSettings::descriptionLength() {
  if (descriptionLength_ == 0) descriptionLength_ = leadingInt16(settingDescriptionLength, 20);
  return descriptionLength_;
}

bool CachedSettings::suppressesDecimals() {
  if (suppression_ == Suppression::Unknown) {
    suppression_ = leadingInt16(settingSuppressDecimals, 0) != 0 ? Suppression::On : Suppression::Off;
  }
  return suppression_ == Suppression::On;
}

}  // namespace zentaro
