// Each setting has a conversion of its own, and a value for a text that does not convert.
#include "printer/cached_settings.h"

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

std::int16_t readTimeOut() {
  return convertOr(12, [] { return toInt16(readSetting(settingTimeOut)); });
}

std::int16_t readLenDescripcion() { return leadingInt16(settingDescriptionLength, 20); }

std::int16_t CachedSettings::TimeOut() {
  if (nTimeOutCache == 0) nTimeOutCache = readTimeOut();
  return nTimeOutCache;
}

std::int16_t CachedSettings::LenDescripcion() {
  if (nLenDescripcionCache == 0) nLenDescripcionCache = readLenDescripcion();
  return nLenDescripcionCache;
}

bool CachedSettings::suppressesDecimals() {
  if (nSuprimirDecimalesCache == Suppression::Unknown) {
    const bool isOn = leadingInt16(settingSuppressDecimals, 0) != 0;
    nSuprimirDecimalesCache = isOn ? Suppression::On : Suppression::Off;
  }
  return nSuprimirDecimalesCache == Suppression::On;
}

}  // namespace zentaro
