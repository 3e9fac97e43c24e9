// Settings, of the user or of the machine, a file or a key of the registry: read as they stand; a file is
// replaced as a whole.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/settings_text.h"

namespace zentaro::tools {

class SettingsFile {
 public:
  /// Raises std::runtime_error when there is no place for a settings file, and when the one that is
  /// there cannot be read.
  explicit SettingsFile(std::string path);

  const std::string& path() const { return path_; }
  bool exists() const { return exists_; }
  const SettingsText& settings() const { return settings_; }

  /// Sets one value in the file as it stands by now, making its folder; what others set at the same time stays.
  /// A reader sees the old file or the new one. Raises std::runtime_error, with the old file as it was, when it
  /// cannot be written, and as SettingsText::set does.
  void set(std::string_view section, std::string_view key, std::string_view value);
  /// Takes a value out of it in the same way.
  void remove(std::string_view section, std::string_view key);

 private:
  void change(const std::function<void(SettingsText&)>& edit);
  void read();

  std::string path_;
  bool exists_ = false;
  SettingsText settings_;
};

struct SettingInForce {
  std::string value;
  bool isOfMachine = false;  // for all its users
};

/// The user's value, else the machine's; nothing where neither file has the key. Raises as SettingsFile.
std::optional<SettingInForce> settingInForce(std::string_view section, std::string_view key);

}  // namespace zentaro::tools
