// The text of a settings file: sections, keys and values, read without ever failing and changed
// without losing a line.
//
//   [Config\EPSONZT]
//   TimeOutZT=12
//   DumpZT = "C:\IFTRACE.TXT"
//   ; a comment
//
// Names are matched without regard to case. A value is taken as it stands behind the "=": blanks count
// ("DebugZT= 0" is not "0"). Only a line that also has a blank before the "=" loses one blank behind it, and
// a pair of double quotes around the whole value is taken away. The last of two equal keys holds. A line that
// is none of this is skipped.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "zentaro_api.h"

namespace zentaro {

class ZENTARO_API SettingsText {
 public:
  struct Entry {
    std::string section, key, value;
  };

  SettingsText() = default;
  explicit SettingsText(std::string_view text);

  std::optional<std::string> value(std::string_view section, std::string_view key) const;
  std::vector<Entry> entries() const;
  /// Replaces the value in its line, or adds key and section; every other line stays as it is.
  /// Raises std::invalid_argument, and changes nothing, for what reading would not give back: a
  /// name or value with a line break, a name with outer blanks, a key that is empty, holds "=" or
  /// begins with "[", ";" or a byte order mark.
  void set(std::string_view section, std::string_view key, std::string_view value);
  /// Takes out every line of the key in that section; every other line stays as it is.
  void remove(std::string_view section, std::string_view key);
  std::string text() const;

 private:
  std::vector<std::string> lines_;
};

}  // namespace zentaro
