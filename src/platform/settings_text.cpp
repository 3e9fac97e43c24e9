// Reads and changes the lines of a settings file.
#include "platform/settings_text.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

#include "platform/ascii.h"

namespace zentaro {
namespace {

// One line, taken apart. `name` is the section of a header, the key of an entry, or empty.
struct Line {
  enum class Kind { Other, Section, Entry } kind = Kind::Other;
  std::string_view name = {};
  std::string_view value = {};
  std::string_view beforeValue = {};  // of an entry: all up to the value, quotes not included
};

std::string_view withoutMarks(std::string_view line) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (line.starts_with(byteOrderMark)) line.remove_prefix(byteOrderMark.size());
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

Line entryOf(std::string_view line, std::size_t equals) {
  std::size_t start = equals + 1;
  const bool isSpaced = equals > 0 && isBlank(line[equals - 1]);
  if (isSpaced && start < line.size() && isBlank(line[start])) ++start;
  Line entry{Line::Kind::Entry, trimmed(line.substr(0, equals)), line.substr(start), line.substr(0, start)};
  const std::string_view value = entry.value;
  if (value.size() >= 2 && value.starts_with('"') && value.ends_with('"')) {
    entry.value = value.substr(1, value.size() - 2);
  }
  return entry;
}

Line parse(std::string_view text) {
  const std::string_view line = withoutMarks(text), content = trimmed(line);
  if (content.starts_with(';')) return {};
  if (content.starts_with('[')) {
    if (!content.ends_with(']')) return {};
    return {Line::Kind::Section, trimmed(content.substr(1, content.size() - 2))};
  }
  const auto equals = line.find('=');
  if (equals == line.npos || trimmed(line.substr(0, equals)).empty()) return {};
  return entryOf(line, equals);
}

// Calls visit(index, section, line) for each line; a section's header belongs to it.
template <class Visit>
void forEachLine(const std::vector<std::string>& lines, Visit visit) {
  std::string_view section;
  for (std::size_t index = 0; index < lines.size(); ++index) {
    const Line line = parse(lines[index]);
    if (line.kind == Line::Kind::Section) section = line.name;
    visit(index, section, line);
  }
}

// A value that itself stands in quotes needs a pair around it that reading takes away.
std::string written(std::string_view value) {
  const bool isQuoted = value.size() >= 2 && value.starts_with('"') && value.ends_with('"');
  return isQuoted ? '"' + std::string(value) + '"' : std::string(value);
}

void requireWritable(std::string_view section, std::string_view key, std::string_view value) {
  constexpr std::string_view lineBreaks("\r\n");
  const bool isSectionWrong = section.find_first_of("\r\n[]") != section.npos || trimmed(section) != section;
  const bool isKeyWrong = key.empty() || trimmed(key) != key || key.find_first_of("\r\n=") != key.npos ||
                          key.starts_with('[') || key.starts_with(';');
  if (isSectionWrong)
    throw std::invalid_argument("a section name cannot hold brackets, line breaks or outer blanks");
  if (isKeyWrong)
    throw std::invalid_argument("a key must be a name without \"=\", line breaks or outer blanks");
  if (value.find_first_of(lineBreaks) != value.npos)
    throw std::invalid_argument("a value must be a single line");
}

}  // namespace

SettingsText::SettingsText(std::string_view text) {
  while (!text.empty()) {
    const auto length = std::min(text.find('\n'), text.size());
    lines_.emplace_back(text.substr(0, length));
    text.remove_prefix(std::min(length + 1, text.size()));
  }
}

std::optional<std::string> SettingsText::value(std::string_view section, std::string_view key) const {
  std::optional<std::string> found;
  forEachLine(lines_, [&](std::size_t, std::string_view current, const Line& line) {
    if (line.kind == Line::Kind::Entry && equalIgnoringCase(current, section) &&
        equalIgnoringCase(line.name, key)) {
      found = line.value;
    }
  });
  return found;
}

std::vector<SettingsText::Entry> SettingsText::entries() const {
  std::vector<Entry> entries;
  forEachLine(lines_, [&](std::size_t, std::string_view section, const Line& line) {
    if (line.kind != Line::Kind::Entry) return;
    entries.push_back({std::string(section), std::string(line.name), std::string(line.value)});
  });
  return entries;
}

void SettingsText::set(std::string_view section, std::string_view key, std::string_view value) {
  requireWritable(section, key, value);
  const std::string lineEnd = !lines_.empty() && lines_.front().ends_with('\r') ? "\r" : "";
  std::optional<std::size_t> entryIndex, sectionEnd;
  std::string changed = std::string(key) + "=" + written(value) + lineEnd;
  if (section.empty()) sectionEnd = 0;
  forEachLine(lines_, [&](std::size_t index, std::string_view current, const Line& line) {
    if (!equalIgnoringCase(current, section)) return;
    if (line.kind != Line::Kind::Other) sectionEnd = index + 1;
    if (line.kind != Line::Kind::Entry || !equalIgnoringCase(line.name, key)) return;
    entryIndex = index;
    const bool needsBlank = line.beforeValue.ends_with('=') && line.beforeValue.size() > 1 &&
                            isBlank(line.beforeValue[line.beforeValue.size() - 2]);
    changed = std::string(line.beforeValue) + (needsBlank ? " " : "") + written(value) + lineEnd;
  });
  if (entryIndex) {
    lines_[*entryIndex] = changed;
    return;
  }
  if (!sectionEnd) {
    lines_.push_back("[" + std::string(section) + "]" + lineEnd);
    sectionEnd = lines_.size();
  }
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(*sectionEnd), changed);
}

std::string SettingsText::text() const {
  std::string text;
  for (const std::string& line : lines_) text += line + '\n';
  return text;
}

}  // namespace zentaro
