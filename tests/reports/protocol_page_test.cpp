// The table of commands in the pages about the protocol, row by row: what each example sends.
#include <fstream>
#include <set>

#include "support/operations.h"

namespace zentaro::testing::protocol_page_test {

struct Row {
  std::string code, member, fields, example, sent;
};

/// The rows of the table whose first column is a command code.
std::vector<Row> rowsOf(const std::string& page) {
  std::vector<Row> rows;
  std::ifstream file(std::string(ZENTARO_SOURCES "/docs/") + page, std::ios::binary);
  for (std::string line; std::getline(file, line);) {
    for (std::size_t at; (at = line.find("\\|")) != std::string::npos;) line.replace(at, 2, "\x1C");
    const auto cells = split(line, '|');
    if (cells.size() != 7 || cells[1].size() != 4 ||
        cells[1].find_first_not_of(" 0123456789ABCDEF") != std::string::npos)
      continue;
    const auto content = [&](std::size_t index) { return cells[index].substr(1, cells[index].size() - 2); };
    const auto quoted = [&](std::size_t index) {
      return content(index).substr(1, content(index).size() - 2);
    };
    Row row{content(1), quoted(2), content(3), quoted(4), quoted(5)};
    std::replace(row.sent.begin(), row.sent.end(), '\x1C', '|');
    rows.push_back(row);
  }
  return rows;
}

class ProtocolPages : public OperationTest {
 protected:
  /// The fields as the column beside them says: a constant in quotes, an empty one, or anything.
  static void checkFields(const Row& row, const std::string& none, const std::string& empty) {
    const std::size_t bar = row.sent.find('|', 1);
    const auto sent =
        bar == std::string::npos ? std::vector<std::string>() : split(row.sent.substr(bar + 1), '|');
    const auto said = row.fields == none ? std::vector<std::string>() : split(row.fields, ',');
    ASSERT_EQ(sent.size(), said.size());
    for (std::size_t at = 0; at < sent.size(); ++at) {
      const std::string word = said[at].substr(at == 0 ? 0 : 1);
      const bool isConstant = word[0] == '`';
      EXPECT_TRUE(word != empty || sent[at] == "~") << sent[at];
      EXPECT_TRUE(!isConstant || "`" + sent[at] + "`" == word) << word << " is sent as " << sent[at];
    }
  }
  void check(const std::string& page, const std::string& none, const std::string& empty) {
    std::set<std::string> sending, shown;
    for (const Member& member : describe<CZentaro>().members)
      if ((member.outcomes & exchanges) != 0) sending.emplace(member.name);
    for (const char* other : {"execute", "ExecuteCMD", "ExecuteOMB", "PerformReturnCierre"})
      sending.erase(other);
    const std::vector<Row> rows = rowsOf(page);
    for (const Row& row : rows) {
      SCOPED_TRACE(page + ": " + row.example);
      renew();
      const bool isCheque = row.code >= "AA";
      if (isCheque) line.answer({{ok('"', ' ')}});  // the slip station is on
      call(row.example);
      ASSERT_EQ(line.written.size(), isCheque ? 3U : 1U);
      EXPECT_EQ(testing::shown(line.written[isCheque ? 1 : 0]), row.sent);
      EXPECT_EQ(static_cast<unsigned char>(line.written[isCheque ? 1 : 0][2]),
                std::stoul(row.code, nullptr, 16));
      EXPECT_TRUE(row.example.starts_with(row.member));
      checkFields(row, none, empty);
      shown.insert(row.member);
    }
    EXPECT_EQ(shown, sending);
  }
};

TEST_F(ProtocolPages, SayWhatIsSentInBothLanguages) {
  check("protocol.md", "none", "empty");
  check("es/protocolo.md", "ninguno", "vac\xC3\xADo");
}

}  // namespace zentaro::testing::protocol_page_test
