// The per-user settings store: strings by application, section and key.
#pragma once

#include <string>
#include <string_view>

namespace zentaro {

class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  /// The value, or `fallback` when it is absent or the store cannot be read. Names are matched
  /// without regard to case.
  virtual std::u16string read(std::string_view application, std::string_view section, std::string_view key,
                              std::u16string_view fallback) = 0;
};

}  // namespace zentaro
