// Settings against the list of those that are known.
#include "tools/doctor/settings_facts.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>

#include "base/terminal/language.h"
#include "text/ascii.h"
#include "text/trimming.h"
#include "tools/connection/known_settings.h"

namespace zentaro::tools {

using terminal::say;

namespace {

Finding judge(const SettingsText::Entry& entry) {
  const auto all = knownSettings();
  const auto setting = std::ranges::find_if(all, [&](const KnownSetting& known) {
    return equalIgnoringCase(known.section, entry.section) && equalIgnoringCase(known.key, entry.key);
  });
  if (setting == all.end())
    return {"unknown-setting", true,
            std::string(say("ninguna clave se llama así; nadie la lee",
                            "no setting has this name, so nobody reads it")),
            std::string(say("\"zentaro settings list\" muestra todos los nombres",
                            "\"zentaro settings list\" shows all names"))};
  if (!isAcceptable(*setting, entry.value))
    return {
        "bad-value", true,
        say("\"{}\" no es un número entero de {} a {}", "\"{}\" is no whole number from {} to {}",
            {entry.value, std::to_string(setting->lowest), std::to_string(setting->highest)}),
        say("zentaro settings set {} {}", "zentaro settings set {} {}", {setting->key, setting->fallback})};
  return {"setting", false, entry.value};
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
                      "\"{}\" is neither [section] nor key=value; it is skipped", {content})});
  }
}

void judgeDevices(const SettingsText& settings, Findings& findings) {
  std::map<std::string, std::string> portOf;
  for (int port = 1; port <= portCount; ++port) {
    const auto device = settings.value(portSection, portKey(port));
    if (!device || device->empty()) continue;
    std::error_code failed;
    const auto target = std::filesystem::weakly_canonical(*device, failed).string();
    const auto [other, isFirst] = portOf.emplace(failed ? *device : target, portKey(port));
    if (isFirst) continue;
    findings.add(portKey(port),
                 {"same-device", true,
                  say("tiene el mismo dispositivo que {}", "has the same device as {}", {other->second}),
                  say("zentaro settings set {} RUTA", "zentaro settings set {} PATH", {portKey(port)})});
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
