// The driver trace: when it is on, and what stands in its file.
#include "serial/driver_trace.h"

#include "automation/automation_error.h"
#include "driver/driver_fixture.h"
#include "serial/trace_text.h"

namespace zentaro::testing::driver_trace_test {

using modCOMM::CommClose;
using modCOMM::CommRead;
using modCOMM::CommWrite;

class DriverTrace : public DriverTest {
 protected:
  void SetUp() override { openPort(); }
  void read(const std::string& bytes) {
    serial.expect("ClearCommError 7", {.count = static_cast<std::uint32_t>(bytes.size())})
        .expect("ReadFile 7 4096", {.data = bytes});
    CommRead(1, data, 4096);
  }
  void write(const std::string& bytes) {
    serial.expect("WriteFile " + bytes + " 7", {.count = static_cast<std::uint32_t>(bytes.size())});
    CommWrite(1, services().codePage->text(bytes));
  }
};

TEST_F(DriverTrace, RecordsEveryWriteAndEveryChunkByteForByte) {
  startTrace(u"trace.txt");
  write(
      "\x02"
      "8\x1C"
      "N\x03");
  read("ABCDEFG HIJKLMN\n");
  read("\xC8");
  write("");
  serial.expect("ClearCommError 7");
  CommRead(1, data, 4096);  // nothing waiting: no record
  serial.expect("WriteFile lost 7", {.error = 5}).expect("ClearCommError 7");
  CommWrite(1, u"lost");
  const std::string stamp = " 15-03-2024 14:05:09\r\n";
  EXPECT_EQ(platform.files.contents["trace.txt"],
            "Send" + stamp + "02 38 1C 4E 03                                  .8.N.\r\n" + "Read" + stamp +
                "41 42 43 44 45 46 47 20 48 49 4A 4B 4C 4D 4E 0A ABCDEFG HIJKLMN.\r\n" + "Read" + stamp +
                "C8                                              \xC8\r\n" + "Send" + stamp);
  EXPECT_EQ(platform.files.writes.size(), 7U) << "each line is one write";
  CommWrite(9, u"x");
  EXPECT_EQ(platform.files.writes.size(), 9U) << "also for a port that there is not";
  EXPECT_EQ(platform.files.writes[7], "Send" + stamp);
}

TEST_F(DriverTrace, LastsFromAFailedOpeningToTheNextClosingOfAnyPort) {
  write("a");
  EXPECT_TRUE(platform.files.writes.empty());
  startTrace(u"first.txt");
  write("b");
  EXPECT_EQ(platform.files.writes.size(), 2U);

  startTrace(u"second.txt");
  EXPECT_EQ(platform.files.openFiles, 1) << "the first file is closed";
  write("c");
  EXPECT_EQ(platform.files.contents["second.txt"].substr(26), "63" + std::string(46, ' ') + "c\r\n");

  EXPECT_EQ(CommClose(5), 0);
  EXPECT_EQ(platform.files.openFiles, 0);
  write("d");
  EXPECT_EQ(platform.files.writes.size(), 4U);
  startTrace(u"third.txt");
  EXPECT_EQ(CommClose(9), 9);
  EXPECT_EQ(platform.files.openFiles, 0) << "also of a port that there is not";
}

TEST_F(DriverTrace, NeedsASettingOtherThanZeroAndAPath) {
  struct Row {
    const char16_t *debug, *path;
    int openFiles;
  };
  for (const Row& row : {Row{u"1", u"t", 1},
                         {u"0", u"t", 0},
                         {u"00", u"t", 1},
                         {u" 0", u"t", 1},
                         {u"", u"t", 1},
                         {u"1", u"", 0}}) {
    startTrace(u"on");
    platform.settings.values[{"Config\\ModComm", "DEBUG"}] = row.debug;
    platform.settings.values[{"Config\\ModComm", "DumpFile"}] = row.path;
    modCOMM::CommTraceStart();
    EXPECT_EQ(platform.files.openFiles, row.openFiles) << utf8(row.debug) << "|" << utf8(row.path);
  }
}

TEST_F(DriverTrace, FileThatCannotBeOpenedIsShownAndLeavesTheTraceOff) {
  platform.files.openError = std::make_error_code(std::errc::no_such_file_or_directory);
  startTrace(u"/none/t");
  ASSERT_EQ(platform.host.boxes.size(), 1U);
  EXPECT_EQ(platform.host.boxes[0].first, u"modComm");
  EXPECT_EQ(platform.host.boxes[0].second,
            u"Imposible abrir el archivo /none/t. Traza inhabilitada\r\nERR: " +
                fileError(platform.files.openError).description());
  write("a");
  EXPECT_TRUE(platform.files.writes.empty());
}

TEST_F(DriverTrace, FailedWriteIsAFaultOfTheTransferAndSwitchesTheTraceOff) {
  platform.files.writeError = std::make_error_code(std::errc::no_space_on_device);
  startTrace(u"t");
  write("a");
  EXPECT_EQ(errorText(), "Error (61): CommWrite - Disk full");
  startTrace(u"t");
  read("b");
  EXPECT_EQ(errorText(), "Error (61): CommRead - Disk full");
  EXPECT_EQ(data, u"b") << "what came is there all the same";
  EXPECT_EQ(platform.files.openFiles, 0);
}

TEST_F(DriverTrace, DumpBreaksAfterSixteenCharactersAndShowsCodesOfTheCodePage) {
  EXPECT_TRUE(dumpLines(u"", windows1252()).empty());
  EXPECT_EQ(dumpLines(std::u16string(16, u'a'), windows1252()).size(), 1U);
  EXPECT_EQ(dumpLines(std::u16string(17, u'a'), windows1252())[1], u"61 " + std::u16string(45, u' ') + u"a");
  EXPECT_EQ(dumpLines(std::u16string(u"\0\x1F\x7F\u20AC\u4E2D", 5), windows1252())[0],
            u"00 1F 7F 80 3F " + std::u16string(33, u' ') + u"..\x7F\u20AC\u4E2D");
}

}  // namespace zentaro::testing::driver_trace_test
