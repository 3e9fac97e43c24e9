// Reads and changes the lines of a settings file.
#include "platform/settings_text.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

#include "text/ascii.h"
#include "text/trimming.h"

namespace zentaro {
namespace {

/// One line, taken apart. `name` is the section of a header, the key of an entry, or empty.
struct Line {
  enum class Kind { Other, Section, Entry } kind = Kind::Other;
  std::string_view name = {};
  std::string_view value = {};
  std::string_view beforeValue = {};  // of an entry: all up to the value, quotes not included
};

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string_view withoutMarks(std::string_view line) {
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

/// Calls visit(index, line) for each line of a section; its header belongs to it.
template <class Visit>
void forEachLineOf(std::string_view section, const std::vector<std::string>& lines, Visit visit) {
  std::string_view current;
  for (std::size_t index = 0; index < lines.size(); ++index) {
    const Line line = parse(lines[index]);
    if (line.kind == Line::Kind::Section) current = line.name;
    if (equalIgnoringCase(current, section)) visit(index, line);
  }
}

/// The index of the line that holds.
std::optional<std::size_t> lastEntry(const std::vector<std::string>& lines, std::string_view section,
                                     std::string_view key) {
  std::optional<std::size_t> found;
  forEachLineOf(section, lines, [&](std::size_t index, const Line& line) {
    if (line.kind == Line::Kind::Entry && equalIgnoringCase(line.name, key)) found = index;
  });
  return found;
}

/// The index behind the last header or entry of a section; what precedes the first header is the
/// section without a name.
std::optional<std::size_t> sectionEnd(const std::vector<std::string>& lines, std::string_view section) {
  std::optional<std::size_t> end;
  if (section.empty()) end = 0;
  forEachLineOf(section, lines, [&](std::size_t index, const Line& line) {
    if (line.kind != Line::Kind::Other) end = index + 1;
  });
  return end;
}

/// A value that itself stands in quotes needs a pair around it that reading takes away.
std::string written(std::string_view value) {
  const bool isQuoted = value.size() >= 2 && value.starts_with('"') && value.ends_with('"');
  return isQuoted ? '"' + std::string(value) + '"' : std::string(value);
}

/// The line with another value; its spacing and its end stay.
std::string changedLine(std::string_view line, std::string_view value) {
  const std::string_view before = parse(line).beforeValue;
  const bool needsBlank = before.size() > 1 && before.ends_with('=') && isBlank(before[before.size() - 2]);
  return std::string(before) + (needsBlank ? " " : "") + written(value) + (line.ends_with('\r') ? "\r" : "");
}

void requireWritable(std::string_view section, std::string_view key, std::string_view value) {
  const auto isName = [](std::string_view name) {
    return trimmed(name) == name && name.find_first_of("\r\n") == name.npos;
  };
  const bool isKey = isName(key) && !key.empty() && key.find('=') == key.npos &&
                     key.find_first_of("[;") != 0 && !key.starts_with(byteOrderMark);
  if (!isName(section)) throw std::invalid_argument("a section name cannot hold line breaks or outer blanks");
  if (!isKey)
    throw std::invalid_argument(
        "a key cannot be empty, hold \"=\", line breaks or outer blanks, or begin with \"[\", \";\" or a "
        "byte order mark");
  if (value.find_first_of("\r\n") != value.npos) throw std::invalid_argument("a value must be a single line");
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
  const auto index = lastEntry(lines_, section, key);
  if (!index) return std::nullopt;
  return std::string(parse(lines_[*index]).value);
}

std::vector<SettingsText::Entry> SettingsText::entries() const {
  std::vector<Entry> entries;
  std::string section;
  for (const std::string& text : lines_) {
    const Line line = parse(text);
    if (line.kind == Line::Kind::Section) section = line.name;
    if (line.kind == Line::Kind::Entry)
      entries.push_back({section, std::string(line.name), std::string(line.value)});
  }
  return entries;
}

void SettingsText::set(std::string_view section, std::string_view key, std::string_view value) {
  requireWritable(section, key, value);
  if (const auto index = lastEntry(lines_, section, key)) {
    lines_[*index] = changedLine(lines_[*index], value);
    return;
  }
  const std::string lineEnd = !lines_.empty() && lines_.front().ends_with('\r') ? "\r" : "";
  auto end = sectionEnd(lines_, section);
  if (!end) {
    lines_.push_back("[" + std::string(section) + "]" + lineEnd);
    end = lines_.size();
  }
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(*end),
                std::string(key) + "=" + written(value) + lineEnd);
}

void SettingsText::remove(std::string_view section, std::string_view key) {
  while (const auto index = lastEntry(lines_, section, key))
    lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(*index));
}

std::string SettingsText::text() const {
  std::string text;
  for (const std::string& line : lines_) text += line + '\n';
  return text;
}

}  // namespace zentaro
