// Settings against the list of those that are known.
#include "tools/doctor/settings_facts.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <sstream>

#include "base/files/paths.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "base/terminal/nearest.h"
#include "text/ascii.h"
#include "text/trimming.h"
#include "tools/connection/known_settings.h"

namespace zentaro::tools {

using terminal::say;

namespace {

// The setting that a name was meant to be; nothing when none is near.
std::optional<KnownSetting> meant(std::string_view key) {
  std::vector<std::string> names;
  const auto all = knownSettings();
  names.reserve(all.size());
  for (const KnownSetting& known : all) names.push_back(known.key);
  const std::string name = terminal::nearest(key, names);
  const auto found = std::ranges::find(all, name, &KnownSetting::key);
  return found == all.end() ? std::nullopt : std::optional(*found);
}

// The value where it can be one, else the number that it begins with, else the default.
std::string mended(const KnownSetting& setting, const std::string& value) {
  const std::string trimmed(withoutWhiteSpace(std::string_view(value)));
  const std::string number = trimmed.substr(0, trimmed.find_first_not_of("0123456789"));
  for (const std::string& candidate : {trimmed, number})
    if (!candidate.empty() && isAcceptable(setting, candidate)) return candidate;
  return setting.fallback;
}

std::string setCommand(const KnownSetting& setting, const std::string& value) {
  return terminal::whole("zentaro settings set " + setting.key + " " + mended(setting, value));
}

Finding unknownName(const SettingsText::Entry& entry) {
  const auto setting = meant(entry.key);
  const bool isMisplaced = setting && equalIgnoringCase(setting->key, entry.key);
  return {"unknown-setting", true,
          isMisplaced ? say("esta clave va en [{}]; aquí nadie la lee",
                            "this setting belongs in [{}]; nobody reads it here", {setting->section})
                      : say("ninguna clave se llama así; nadie la lee",
                            "no setting has this name, so nobody reads it"),
          setting ? setCommand(*setting, entry.value)
                  : say("{} muestra todos los nombres", "{} shows all names",
                        {terminal::quoted("zentaro settings list")})};
}

Finding judge(const SettingsText::Entry& entry) {
  const auto all = knownSettings();
  const auto setting = std::ranges::find_if(all, [&](const KnownSetting& known) {
    return equalIgnoringCase(known.section, entry.section) && equalIgnoringCase(known.key, entry.key);
  });
  if (setting == all.end()) return unknownName(entry);
  if (!isAcceptable(*setting, entry.value))
    return {"bad-value", true,
            say("\"{}\" no es un número entero de {} a {}", "\"{}\" is no whole number from {} to {}",
                {entry.value, std::to_string(setting->lowest), std::to_string(setting->highest)}),
            setCommand(*setting, entry.value)};
  return {"setting", false, entry.value};
}

// A line without "=": what stands behind the name is taken for its value.
std::string adviceFor(std::string_view content) {
  const std::size_t end = content.find_first_of(" \t:");
  const auto setting = meant(content.substr(0, end));
  if (!setting || end == content.npos)
    return say("escríbala como clave=valor, o bórrela", "write it as key=value, or take it out");
  std::string_view value = content.substr(end);
  value.remove_prefix(std::min(value.find_first_not_of(" \t:"), value.size()));
  return setCommand(*setting, std::string(value));
}

// Lines that are no section, no comment and no "key=value": they are skipped when settings are read.
void judgeLines(const SettingsText& settings, Findings& findings) {
  std::istringstream text(settings.text());
  int number = 0;
  for (std::string line; std::getline(text, line);) {
    ++number;
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";  // as some editors begin a file
    std::string_view content = line;
    if (content.starts_with(byteOrderMark)) content.remove_prefix(byteOrderMark.size());
    content = withoutWhiteSpace(content);
    const bool isPassedOver = content.empty() || content[0] == ';' || content[0] == '#';
    const bool isSection = content.starts_with('[') && content.ends_with(']');
    const bool isEntry = !content.starts_with('[') && content.find('=') != std::string_view::npos;
    if (isPassedOver || isSection || isEntry) continue;
    findings.add(say("línea {}", "line {}", {std::to_string(number)}),
                 {"unreadable-line", true,
                  say("\"{}\" no es [sección] ni clave=valor; no se lee",
                      "\"{}\" is neither [section] nor key=value; it is skipped", {content}),
                  adviceFor(content)});
  }
}

void judgeDevices(const SettingsText& settings, Findings& findings) {
  std::map<std::string, std::string> portOf;
  for (int port = 1; port <= portCount; ++port) {
    const auto device = settings.value(portSection, portKey(port));
    if (!device || device->empty()) continue;
    std::error_code failed;
    const auto target = files::textOf(std::filesystem::weakly_canonical(files::pathOf(*device), failed));
    const auto [other, isFirst] = portOf.emplace(failed ? *device : target, portKey(port));
    if (isFirst) continue;
    findings.add(portKey(port),
                 {"same-device", true,
                  say("tiene el mismo dispositivo que {}", "has the same device as {}", {other->second}),
                  terminal::whole(
                      say("zentaro settings set {} RUTA", "zentaro settings set {} PATH", {portKey(port)}))});
  }
}

}  // namespace

void judgeSettings(const SettingsText& settings, Findings& findings) {
  for (const SettingsText::Entry& entry : settings.entries())
    findings.add("[" + entry.section + "] " + entry.key, judge(entry));
  judgeLines(settings, findings);
  judgeDevices(settings, findings);
}

}  // namespace zentaro::tools
