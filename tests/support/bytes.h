// Bytes as readable text, lists of texts, and command frames built by hand, not by the code under test.
#pragma once

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace zentaro::testing {

/// "<STX>\"H<ETX>006F": STX, ETX, FS, DEL and WAIT (the wait byte) by name, any other byte by its two
/// hexadecimal digits.
inline std::string bytes(const std::string& readable) {
  static const std::map<std::string, char> names{
      {"STX", '\x02'}, {"ETX", '\x03'}, {"FS", '\x1C'}, {"DEL", '\x7F'}, {"WAIT", '\x0C'}};
  std::string result;
  for (std::size_t i = 0; i < readable.size(); ++i) {
    const std::size_t end = readable[i] == '<' ? readable.find('>', i) : std::string::npos;
    if (end == std::string::npos) {
      result += readable[i];
      continue;
    }
    const std::string name = readable.substr(i + 1, end - i - 1);
    const auto known = names.find(name);
    result += known != names.end() ? known->second : static_cast<char>(std::stoi(name, nullptr, 16));
    i = end;
  }
  return result;
}

inline bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

inline std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts{""};
  for (const char c : text) {
    if (c == separator)
      parts.emplace_back();
    else
      parts.back() += c;
  }
  return parts;
}

inline std::string joined(const std::vector<std::string>& parts, const char* separator) {
  std::string text;
  for (std::size_t at = 0; at < parts.size(); ++at) text += (at == 0 ? "" : separator) + parts[at];
  return text;
}

inline std::size_t occurrences(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

/// Rows of "left => right", with line ends or ";" between them. A left side that begins or ends with a blank
/// stands in quotes.
inline std::vector<std::pair<std::string, std::string>> table(std::string text) {
  std::vector<std::pair<std::string, std::string>> rows;
  std::replace(text.begin(), text.end(), '\n', ';');
  for (const std::string& row : split(text, ';')) {
    const std::size_t begin = row.find_first_not_of(' '), arrow = row.find(" => ");
    if (begin == std::string::npos) continue;
    const bool isQuoted = row[begin] == '\'' && row[arrow - 1] == '\'';
    rows.emplace_back(row.substr(begin + isQuoted, arrow - begin - 2 * isQuoted), row.substr(arrow + 4));
  }
  return rows;
}

/// The frame of "42 Cafe|2000": the code, and its fields.
inline std::string commandFrame(char sequence, const std::string& line) {
  std::string frame =
      bytes("<STX>") + sequence + static_cast<char>(std::stoi(line.substr(0, 2), nullptr, 16));
  if (line.size() > 2) {
    for (const std::string& field : split(line.substr(3), '|'))
      frame += bytes("<FS>") + (field.empty() ? bytes("<DEL>") : field);
  }
  frame += bytes("<ETX>");
  unsigned sum = 0;
  for (const char c : frame) sum += static_cast<unsigned char>(c);
  char digits[16];
  std::snprintf(digits, sizeof digits, "%04X", sum);
  return frame + digits;
}

}  // namespace zentaro::testing
