// Commands on a noisy line: what is found, what is passed over, and that pieces make no difference.
#include "virtual-printer/wire/receiver.h"

#include <gtest/gtest.h>

#include "support/bytes.h"

namespace virtual_printer::receiver_test {

using zentaro::testing::bytes;

// One letter each: C and the code for a command, R for a reset. Ignored bytes are counted, not listed.
struct Heard {
  std::string what;
  std::size_t ignored = 0;
  bool operator==(const Heard&) const = default;
};

void add(Heard& heard, const std::vector<Received>& received) {
  for (const Received& one : received) {
    if (const auto* command = std::get_if<Command>(&one))
      heard.what += std::string{"C"} + static_cast<char>(command->code);
    if (std::holds_alternative<ResetSequence>(one)) heard.what += "R";
    if (const auto* ignored = std::get_if<Ignored>(&one)) heard.ignored += ignored->bytes.size();
  }
}

constexpr const char* hello = "<STX>\"H<ETX>006F";
constexpr const char* hola = "<STX>\"I<FS>HOLA<ETX>01B0";
constexpr const char* reset = "<07><08><09><0A><0B><0C><0D><0E><0F><10><11>";

struct Row {
  const char* name;
  std::string line;
  Heard expected;
};

const std::vector<Row>& rows() {
  static const std::string h{hello}, i{hola}, r{reset};
  static const std::vector<Row> table{
      {"one command", h, {"CH", 0}},
      {"two commands", h + i, {"CHCI", 0}},
      {"junk before", "abc" + h, {"CH", 3}},
      {"junk between", h + "<FF><00>" + i, {"CHCI", 2}},
      {"wrong checksum", "<STX>\"H<ETX>0070" + i, {"CI", 8}},
      {"lower-case checksum is none", "<STX>\"H<ETX>006f" + i, {"CI", 8}},
      {"a stump before a command", "<STX>\"B<FS>Que" + h, {"CH", 7}},
      {"a frame cut inside its checksum", "<STX>\"H<ETX>00" + i, {"CI", 6}},
      {"an end without a beginning", "<ETX>006F" + h, {"CH", 5}},
      {"STX twice", "<STX>" + h, {"CH", 1}},
      {"too short for a command", "<STX><ETX>0005" + h, {"CH", 6}},
      {"reset", r, {"R", 0}},
      {"reset between commands", h + r + i, {"CHRCI", 0}},
      {"reset gives up the stump before it", "<STX>\"B" + r + h, {"RCH", 3}},
      {"a broken reset is noise", "<07><08><0A>" + h, {"CH", 3}},
      {"a reset that begins twice", "<07><08>" + r, {"R", 2}},
      {"a field holds a wait byte", "<STX>\"I<FS><0C><ETX>0098", {"CI", 0}},
  };
  return table;
}

TEST(Receiver, FindsCommandsAndResetsAmongNoise) {
  for (const Row& row : rows()) {
    Receiver receiver;
    Heard heard;
    add(heard, receiver.feed(bytes(row.line)));
    EXPECT_EQ(heard.what, row.expected.what) << row.name;
    EXPECT_EQ(heard.ignored, row.expected.ignored) << row.name;
  }
}

TEST(Receiver, PiecesMakeNoDifference) {
  for (const Row& row : rows()) {
    const std::string line = bytes(row.line);
    for (std::size_t cut = 1; cut < line.size(); ++cut) {
      Receiver receiver;
      Heard heard;
      add(heard, receiver.feed(line.substr(0, cut)));
      add(heard, receiver.feed(line.substr(cut)));
      EXPECT_EQ(heard, row.expected) << row.name << " cut at " << cut;
    }
    Receiver slow;
    Heard heard;
    for (const char byte : line) add(heard, slow.feed({&byte, 1}));
    EXPECT_EQ(heard, row.expected) << row.name << " byte by byte";
  }
}

TEST(Receiver, ChecksumOfALongCommandHasFiveDigits) {
  const std::string frame = zentaro::testing::commandFrame('"', "49 " + std::string(700, 'z'));
  ASSERT_EQ(frame[frame.size() - 6], '\x03');
  Receiver receiver;
  Heard heard;
  add(heard, receiver.feed(frame.substr(0, frame.size() - 1)));
  EXPECT_EQ(heard.what, "") << "the fifth digit has not come yet";
  add(heard, receiver.feed(frame.substr(frame.size() - 1)));
  EXPECT_EQ(heard.what, "CI");
}

TEST(Receiver, EndlessNoiseIsForgottenAndTheNextCommandFound) {
  Receiver receiver;
  Heard heard;
  for (int block = 0; block < 100; ++block) add(heard, receiver.feed(std::string(1000, '\x02')));
  add(heard, receiver.feed(bytes(hello)));
  EXPECT_EQ(heard.what, "CH");
  EXPECT_EQ(heard.ignored, 100'000U);
  Receiver other;
  Heard early;
  add(early, other.feed(std::string(40'001, '\x02')));
  EXPECT_EQ(early.ignored, 40'001U) << "and not kept longer than any command is";
}

}  // namespace virtual_printer::receiver_test
