// Frames: bytes worked out by hand against what the printer builds and reads.
#include "virtual-printer/wire/frame.h"

#include <gtest/gtest.h>

#include "support/bytes.h"
#include "virtual-printer/wire/codepage.h"

namespace virtual_printer::frame_test {

using zentaro::testing::bytes;

TEST(AnswerFrame, CarriesStatusWordsFieldsAndAFourDigitChecksum) {
  const struct {
    const char* name;
    Command asked;
    Answer answer;
    const char* frame;
  } rows[] = {
      {"no data fields", {'"', 0x49, {}}, {0x0600, 0x3080, {}}, "<STX>\"I<FS>0600<FS>3080<ETX>0239"},
      {"status words are padded and in capitals",
       {'!', 0x40, {}},
       {0x000A, 0xABCD, {}},
       "<STX>!@<FS>000A<FS>ABCD<ETX>0279"},
      {"two data fields",
       {'"', 0x49, {}},
       {0x0600, 0x3080, {"12", "3"}},
       "<STX>\"I<FS>0600<FS>3080<FS>12<FS>3<ETX>0307"},
      {"an empty field would vanish, so it is sent as DEL",
       {'"', 0x49, {}},
       {0x0600, 0x3080, {""}},
       "<STX>\"I<FS>0600<FS>3080<FS><DEL><ETX>02D4"},
  };
  for (const auto& row : rows) EXPECT_EQ(encodeAnswer(row.asked, row.answer), bytes(row.frame)) << row.name;
}

TEST(AnswerFrame, ChecksumIsReducedToSixteenBits) {
  const Answer answer{0, 0, {std::string(600, 'z')}};  // 600 x 7A, and the frame around it
  const std::string frame = encodeAnswer({'!', 0x40, {}}, answer);
  const unsigned sum = 600 * 0x7A + 0x02 + '!' + 0x40 + 3 * 0x1C + 8 * '0' + 0x03;
  ASSERT_GT(sum, 0xFFFFU);
  EXPECT_EQ(std::stoul(frame.substr(frame.size() - 4), nullptr, 16), sum - 0x10000);
  EXPECT_EQ(frame[frame.size() - 5], '\x03') << "exactly four digits";
}

TEST(CommandFrame, FieldsAreCutAtSeparators) {
  const struct {
    const char* body;
    Command command;
  } rows[] = {
      {"\"H", {'"', 0x48, {}}},
      {"\"I<FS>HOLA", {'"', 0x49, {"HOLA"}}},
      {"#D<FS><DEL><FS>1250<FS>T", {'#', 0x44, {"", "1250", "T"}}},
      {"#D<FS><FS>x", {'#', 0x44, {"", "x"}}},
      {"!I<FS>a<DEL>", {'!', 0x49, {bytes("a<DEL>")}}},  // only a lone DEL stands for nothing
      {"<DEL><80>", {'\x7F', 0x80, {}}},
  };
  for (const auto& row : rows) EXPECT_EQ(decodeCommand(bytes(row.body)), row.command) << row.body;
}

TEST(CodePage, BytesOfTheLineBecomeUtf8AndControlsDots) {
  const struct {
    const char* wire;
    const char* text;
  } rows[] = {
      {"Cafe", "Cafe"},        {"Caf<E9>", "Caf\u00E9"},       {"<D1>o<F1>o", "\u00D1o\u00F1o"},
      {"<80> 5", "\u20AC 5"},  {"<93>a<94>", "\u201Ca\u201D"}, {"a<09>b<1B>c<DEL>", "a.b.c."},
      {"<81><8D><9D>", "..."}, {"<9F><FF>", "\u0178\u00FF"},
  };
  for (const auto& row : rows) EXPECT_EQ(utf8FromWire(bytes(row.wire)), row.text) << row.wire;
}

}  // namespace virtual_printer::frame_test
