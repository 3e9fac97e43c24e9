// Bytes as readable text, and frames built by hand rather than by the printer's own code.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

// "<STX>\"H<ETX>006F" with STX, ETX, FS, DEL, WAIT and pairs of hexadecimal digits between the brackets.
inline std::string bytes(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const std::size_t end = text[0] == '<' ? text.find('>') : 0;
    const std::string_view name = text.substr(text[0] == '<' ? 1 : 0, end == 0 ? 1 : end - 1);
    if (text[0] != '<')
      out += text[0];
    else if (name == "STX")
      out += '\x02';
    else if (name == "ETX")
      out += '\x03';
    else if (name == "FS")
      out += '\x1C';
    else if (name == "DEL")
      out += '\x7F';
    else if (name == "WAIT")
      out += '\x0C';
    else
      out += static_cast<char>(std::stoi(std::string{name}, nullptr, 16));
    text.remove_prefix(end + 1);
  }
  return out;
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

inline std::string commandFrame(char sequence, const std::string& code,
                                const std::vector<std::string>& fields) {
  std::string frame = bytes("<STX>") + sequence + static_cast<char>(std::stoi(code, nullptr, 16));
  for (const std::string& field : fields) frame += bytes("<FS>") + (field.empty() ? bytes("<DEL>") : field);
  frame += bytes("<ETX>");
  unsigned sum = 0;
  for (const char c : frame) sum += static_cast<unsigned char>(c);
  char digits[16];
  std::snprintf(digits, sizeof digits, "%04X", sum);
  return frame + digits;
}

}  // namespace bench
