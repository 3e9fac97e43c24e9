// Operations as rows of text: what is called by its name, and what the printer must see of it.
//
//   RecibirPago 100 => D|~|10000|T      the fields of the one frame that is sent; nobody answers
//   AbrirGavetaN 3 => returns 6         nothing is sent; "stored": the outcome is kept in the object too
//   RecibirPago 'x' => raises 13        nothing is sent; "late": the sequence number has advanced
//
// Arguments: numbers, dates such as 2024-03-15T14:05:09, 'texts', and the names below.
// Lines that begin with "-" are remarks.
#pragma once

#include "automation/description.h"
#include "support/printer_fixture.h"

namespace zentaro::testing {

inline Variant argument(const std::string& word) {
  static const std::map<std::string, Variant> names{{"true", true},
                                                    {"false", false},
                                                    {"null", Variant::null()},
                                                    {"empty", {}},
                                                    {"missing", Variant::missing()}};
  if (const auto named = names.find(word); named != names.end()) return named->second;
  if (word[0] == '\'') return word.substr(1, word.size() - 2);
  CalendarTime time;
  if (std::sscanf(word.c_str(), "%d-%d-%dT%d:%d:%d", &time.year, &time.month, &time.day, &time.hour,
                  &time.minute, &time.second) >= 3)
    return dateOf(time);
  return word.find_first_of(".e") == std::string::npos ? Variant(std::stoi(word)) : Variant(std::stod(word));
}

class OperationTest : public PrinterTest {
 protected:
  Variant call(const std::string& name, std::span<Variant> arguments) {
    return Object(describe<CZentaro>(), std::shared_ptr<CZentaro>(z.get(), [](CZentaro*) {}))
        .call(name, arguments);
  }

  /// Calls the member that the row names first, with the arguments behind it.
  Variant call(const std::string& row) {
    std::vector<std::string> words{""};
    bool isQuoted = false;
    for (const char c : row) {
      isQuoted = isQuoted != (c == '\'');
      if (c == ' ' && !isQuoted)
        words.emplace_back();
      else
        words.back() += c;
    }
    std::vector<Variant> arguments;
    for (std::size_t at = 1; at < words.size(); ++at) arguments.push_back(argument(words[at]));
    return call(words[0], arguments);
  }

  void check(const std::string& rows) {
    for (const std::string& row : split(rows, '\n')) {
      const std::size_t begin = row.find_first_not_of(' '), arrow = row.find(" => ");
      if (begin == std::string::npos || row[begin] == '-') continue;
      EXPECT_EQ(effect(row.substr(begin, arrow - begin)), row.substr(arrow + 4)) << row;
    }
  }

 private:
  std::string effect(const std::string& row) {
    line.written.clear();
    const char16_t before = sequence();
    z->nEnvironmentError = ENVERR_STATUS;
    std::string result;
    const int error = errorOf([&] {
      const Variant value = call(row);
      result = value.is(Variant::Kind::Int16) || value.is(Variant::Kind::Int32) ? utf8(toText(value)) : "";
    });
    EXPECT_LE(line.written.size(), 1U) << row;
    if (line.written.size() == 1) {
      EXPECT_EQ(z->nEnvironmentError, ENVERR_COMM) << row;
      EXPECT_TRUE(result.empty() || result == "1") << row << " gave " << result;
      return sent();
    }
    const bool isLate = (sequence() - before + 95) % 95 != 1;
    EXPECT_TRUE(z->nEnvironmentError == ENVERR_STATUS || z->nEnvironmentError == ENVERR_BADARG) << row;
    return (error != 0 ? "raises " + std::to_string(error) : "returns " + result) + (isLate ? " late" : "") +
           (z->nEnvironmentError == ENVERR_BADARG ? " stored" : "");
  }
  /// That of a frame built now.
  char16_t sequence() { return z->BuildOMB(0x48, {})[1]; }
};

}  // namespace zentaro::testing
