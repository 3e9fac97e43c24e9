// The user's settings with a few of them replaced for this process: the store itself stays as it is.
#pragma once

#include <map>
#include <string>
#include <utility>

#include "platform/settings_store.h"

namespace zentaro::till {

class OverlaySettings : public SettingsStore {
 public:
  explicit OverlaySettings(SettingsStore& below) : below_(below) {}

  void replace(std::string_view section, std::string_view key, std::u16string value) {
    values_[{std::string(section), std::string(key)}] = std::move(value);
  }

  std::u16string read(std::string_view application, std::string_view section, std::string_view key,
                      std::u16string_view fallback) override {
    const auto found = values_.find({std::string(section), std::string(key)});
    return found == values_.end() ? below_.read(application, section, key, fallback) : found->second;
  }

 private:
  SettingsStore& below_;
  std::map<std::pair<std::string, std::string>, std::u16string> values_;
};

}  // namespace zentaro::till
