// The settings store: the registry of the user, where the GetSetting and SaveSetting of scripts and
// VBA reach it.
#include <algorithm>
#include <optional>

#include "platform/system_paths.h"
#include "platform/windows/system.h"
#include "platform/windows/windows_services.h"
#include "text/unicode.h"

namespace zentaro::windows {
namespace {

/// The text under a key of the user; nothing when there is none, or something other than a text.
std::optional<std::wstring> userText(const std::wstring& path, const std::wstring& name) {
  std::wstring text(256, L'\0');
  for (;;) {
    auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    const LSTATUS result = ::RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name.c_str(), RRF_RT_REG_SZ,
                                          nullptr, text.data(), &size);
    if (result == ERROR_SUCCESS) return text.substr(0, text.find(L'\0'));
    if (result != ERROR_MORE_DATA) return std::nullopt;
    text.resize(std::max<std::size_t>(text.size() * 2, size / sizeof(wchar_t)));
  }
}

class RegistrySettings : public SettingsStore {
 public:
  std::u16string read(std::string_view application, std::string_view section, std::string_view key,
                      std::u16string_view fallback) override {
    const std::wstring path =
        LR"(Software\VB and VBA Program Settings\)" + wide(utf16(application)) + L'\\' + wide(utf16(section));
    const auto value = userText(path, wide(utf16(key)));
    return value ? narrow(*value) : std::u16string(fallback);
  }
};

}  // namespace

SettingsStore& registrySettings() { return lasting<RegistrySettings>(); }

}  // namespace zentaro::windows

namespace zentaro {

std::string settingsPath() { return R"(HKEY_CURRENT_USER\Software\VB and VBA Program Settings\TRV)"; }
std::string systemSettingsPath() { return {}; }
std::vector<std::string> settingsPaths() { return {settingsPath()}; }

std::optional<UnreadableFile> unreadableSettings() { return std::nullopt; }  // the registry is no file

}  // namespace zentaro
