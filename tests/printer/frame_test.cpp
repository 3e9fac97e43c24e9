// Command frames byte for byte, the sequence number, and what a failing frame leaves behind.
#include "printer/frame.h"

#include <gtest/gtest.h>

#include "support/printer_fixture.h"

namespace zentaro::testing::frame_test {

using FrameTest = PrinterTest;

std::string frameBytes(const std::u16string& frame) { return windows1252().bytes(frame); }

TEST_F(FrameTest, FramesAreBuiltByteForByte) {
  struct Row {
    const char* name;
    std::int16_t command;
    Array fields;
    const char* expected;
  };
  const Row rows[] = {
      {"no fields", 0x48, {}, "<STX>\"H<ETX>006F"},
      {"one field", 0x49, {u"HOLA"}, "<STX>#I<FS>HOLA<ETX>01B1"},
      {"an empty field, a number and a letter",
       0x44,
       {u"", 1250, u"T"},
       "<STX>$D<FS><DEL><FS>1250<FS>T<ETX>025C"},
      {"an Empty and a negative number", 0x49, {Variant(), -5}, "<STX>%I<FS><DEL><FS>-5<ETX>018C"},
      {"a command above 127", 0x80, {}, "<STX>&<80><ETX>00AB"},
      {"a byte above 127 and one outside the code page",
       0x49,
       {u"\u00F1\u4E00"},
       "<STX>'I<FS><F1>?<ETX>01C1"},
      {"the highest command, and control characters as they are",
       0xFF,
       {u"\u007F", u"a\u0002\u0003\u001Cb"},
       "<STX>(<FF><FS><DEL><FS>a<STX><ETX><FS>b<ETX>02C7"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(frameBytes(z->BuildOMB(row.command, row.fields)), bytes(row.expected)) << row.name;
    EXPECT_EQ(z->nLastCommand, row.command) << row.name;
  }
  EXPECT_TRUE(line.written.empty());
}

TEST_F(FrameTest, ASumAbove65535IsWrittenInFull) {
  // 02 + 22 + 49 + 1C + 600 * 7A + 03 = 73,340
  EXPECT_TRUE(z->BuildOMB(0x49, {std::u16string(600, u'z')})
                  .ends_with(u"\x03"
                             u"11E7C"));
  // 02 + 23 + 49 + 1C + 32762 * 7A + 03, of 32,767 characters
  EXPECT_TRUE(z->BuildOMB(0x49, {std::u16string(32762, u'z')})
                  .ends_with(u"\x03"
                             u"3CFDB1"));
}

TEST_F(FrameTest, TheSequenceRunsFrom22To7FAndBackTo21) {
  std::string sequence;
  for (int frames = 0; frames < 96; ++frames) sequence += frameBytes(z->BuildOMB(0x48, {}))[1];
  EXPECT_EQ(sequence.front(), '\x22');
  EXPECT_EQ(sequence[93], '\x7F');
  EXPECT_EQ(sequence.substr(94), "\x21\x22");
}

TEST_F(FrameTest, AFailingFrameHasStillTakenItsSequenceNumber) {
  struct Row {
    const char* name;
    std::int16_t command;
    Array fields;
    int error;
  };
  const Row rows[] = {
      {"a command below 0", -1, {}, 5},
      {"a command above 255", 256, {}, 5},
      {"an array without bounds", 0x41, Array::withoutBounds(), 9},
      {"Null", 0x41, {u"x", Variant::null()}, 94},
      {"an array", 0x41, {Variant(Array{1})}, 13},
      {"an omitted argument", 0x41, {Variant::missing()}, 13},
      {"more than 32,767 characters with STX, sequence, command, FS and ETX",
       0x41,
       {std::u16string(32763, u'x')},
       6},
  };
  char expected = '\x22';
  for (const Row& row : rows) {
    EXPECT_EQ(errorOf([&] { z->BuildOMB(row.command, row.fields); }), row.error) << row.name;
    EXPECT_EQ(z->nLastCommand, row.command) << row.name;
    ++expected;
    EXPECT_EQ(frameBytes(z->BuildOMB(0x48, {}))[1], expected) << row.name;
    ++expected;
  }
}

}  // namespace zentaro::testing::frame_test
