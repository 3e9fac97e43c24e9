// Every setting that the library reads: section, key, default and meaning. All belong to the
// application "TRV".
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "platform/services.h"

namespace zentaro {

struct SettingKey {
  std::string_view section, key;
  std::u16string_view fallback;
  std::string_view meaning;
};

inline constexpr std::string_view settingsApplication = "TRV";
inline constexpr std::string_view printerSection = R"(Config\EPSONZT)", driverSection = R"(Config\ModComm)";

inline constexpr SettingKey settingTimeOut{printerSection, "TimeOutZT", u"12",
                                           "time-out of an answer in whole seconds"};
inline constexpr SettingKey settingDescriptionLength{printerSection, "LenDescripcionZT", u"20",
                                                     "longest item description in characters"};
inline constexpr SettingKey settingSuppressDecimals{
    printerSection, "SuprimirDecimalesEZT", u"0",
    "other than 0: an item with a fractional quantity is sent as one piece at price x quantity"};
inline constexpr SettingKey settingObjectTrace{printerSection, "DebugZT", u"0",
                                               "other than \"0\": every printer object traces all its life"};
inline constexpr SettingKey settingObjectTraceFile{printerSection, "DumpZT", uR"(C:\IFTRACE.TXT)",
                                                   "file of the object trace"};
inline constexpr SettingKey settingDriverTrace{driverSection, "DEBUG", u"0",
                                               "other than \"0\": the driver traces after a failed opening"};
inline constexpr SettingKey settingDriverTraceFile{driverSection, "DumpFile", u"",
                                                   "file of the driver trace"};

inline constexpr std::array allSettings{
    settingTimeOut,         settingDescriptionLength, settingSuppressDecimals, settingObjectTrace,
    settingObjectTraceFile, settingDriverTrace,       settingDriverTraceFile};

/// The setting's value in the store of the thread's services, or its default.
inline std::u16string readSetting(const SettingKey& setting) {
  return services().settings->read(settingsApplication, setting.section, setting.key, setting.fallback);
}

}  // namespace zentaro
