// The rows, and the columns of the table.
#include "tools/show/record_words.h"

#include <algorithm>

#include "automation/description.h"
#include "base/terminal/colour.h"
#include "base/terminal/layout.h"
#include "tools/show/show.h"
#include "tools/show/wording.h"

namespace zentaro::tools {

namespace {

// The member's help, without its full stop.
std::string wordsFor(const Member& member) {
  std::string words = inLanguage(member.help);
  words.pop_back();
  return words;
}

// Amounts have two decimals; should one have more, nothing is rounded away.
std::string valueFor(const Variant& value) {
  std::string text = valueText(value);
  if (value.is(Variant::Kind::Currency) && text.ends_with("00")) text.resize(text.size() - 2);
  if (value.is(Variant::Kind::Date)) text.replace(std::min(text.find('T'), text.size()), 1, " ");
  return text;
}

}  // namespace

std::vector<RecordRow> recordRows(const Object& record) {
  std::vector<RecordRow> rows;
  forEachValue(record, [&](const Member& member, const Variant& value) {
    rows.push_back({member.name, wordsFor(member), valueFor(value)});
  });
  return rows;
}

std::string recordTable(const std::vector<RecordRow>& rows) {
  constexpr std::size_t widestWords = 35, widestValue = 19;  // of all, and of a date with its time
  std::string table;
  for (const auto& [member, words, value] : rows)
    table += "  " + terminal::padded(words, widestWords) + terminal::paddedLeft(value, widestValue) + "  " +
             terminal::coloured(terminal::Colour::Faint, member) + "\n";
  return table;
}

}  // namespace zentaro::tools
