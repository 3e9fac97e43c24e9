// The settings of the account: the values below one key of the registry, where VBA keeps them, too.
#include "tools/settings/settings_file.h"

#include <stdexcept>

#include "base/terminal/language.h"
#include "base/terminal/windows/text.h"

namespace zentaro::tools {

namespace {

using terminal::narrow;
using terminal::wide;

class Key {
 public:
  Key(HKEY above, const std::wstring& name) {
    if (::RegOpenKeyExW(above, name.c_str(), 0, KEY_READ, &key_) != ERROR_SUCCESS) key_ = nullptr;
  }
  ~Key() {
    if (key_ != nullptr) ::RegCloseKey(key_);
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  HKEY get() const { return key_; }

 private:
  HKEY key_ = nullptr;
};

// Behind "HKEY_CURRENT_USER\\".
std::wstring below(const std::string& path, std::string_view section = {}) {
  std::wstring name = wide(path.substr(path.find('\\') + 1));
  return section.empty() ? name : name + L'\\' + wide(section);
}

void demand(LSTATUS result, const std::string& path) {
  if (result == ERROR_SUCCESS || result == ERROR_FILE_NOT_FOUND) return;
  throw std::runtime_error(terminal::say("no se puede escribir {}: {}", "cannot write {}: {}",
                                         {path, terminal::reasonOf(static_cast<DWORD>(result))}));
}

// The values of a key, and those of the keys below it, whose names make a section.
void readInto(SettingsText& settings, HKEY key, const std::wstring& section) {
  wchar_t name[16384], value[16384];
  for (DWORD index = 0;; ++index) {
    DWORD length = static_cast<DWORD>(std::size(name)), size = sizeof value, kind = 0;
    if (::RegEnumValueW(key, index, name, &length, nullptr, &kind, reinterpret_cast<BYTE*>(value), &size) !=
        ERROR_SUCCESS)
      break;
    std::wstring text(value, size / sizeof(wchar_t));
    if (kind == REG_SZ) settings.set(narrow(section), narrow({name, length}), narrow(text.c_str()));
  }
  for (DWORD index = 0;; ++index) {
    auto length = static_cast<DWORD>(std::size(name));
    if (::RegEnumKeyExW(key, index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
      break;
    const Key inner(key, {name, length});
    if (inner.get() != nullptr)
      readInto(settings, inner.get(), (section.empty() ? L"" : section + L'\\') + std::wstring(name, length));
  }
}

}  // namespace

SettingsFile::SettingsFile(std::string path) : path_(std::move(path)) { read(); }

void SettingsFile::set(std::string_view section, std::string_view key, std::string_view value) {
  const std::wstring text = wide(value);
  demand(::RegSetKeyValueW(HKEY_CURRENT_USER, below(path_, section).c_str(), wide(key).c_str(), REG_SZ,
                           text.c_str(), static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))),
         path_);
  read();
}

void SettingsFile::remove(std::string_view section, std::string_view key) {
  demand(::RegDeleteKeyValueW(HKEY_CURRENT_USER, below(path_, section).c_str(), wide(key).c_str()), path_);
  read();
}

void SettingsFile::read() {
  const Key key(HKEY_CURRENT_USER, below(path_));
  exists_ = key.get() != nullptr;
  settings_ = SettingsText();
  if (exists_) readInto(settings_, key.get(), L"");
}

}  // namespace zentaro::tools
