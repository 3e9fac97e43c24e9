// The object trace byte for byte, switched, forced, and failing.
#include <gtest/gtest.h>

#include "support/printer_fixture.h"

namespace zentaro::testing::trace_test {

const std::string path = "C:\\IFTRACE.TXT";
const std::string stamp = " 15-03-2024 14:05:09\r\n";

class TraceTest : public PrinterTest {
 protected:
  std::string& file() { return platform.files.contents[path]; }
  int openFiles() const { return platform.files.openFiles; }
};

TEST_F(TraceTest, ATransactionIsFourRecords) {
  z->DebugMode(u"1");
  // Three chunks, one dump.
  line.answer({{"<WAIT>"}, {"<STX>\"H<FS>06"}, {"00<FS>3080<ETX>0238"}});
  z->ExecuteCMD(72);
  EXPECT_EQ(file(), "Send" + stamp +
                        "02 22 48 03 30 30 36 46                         .\"H.006F\r\n"
                        "ReadStatus" +
                        stamp + "48 1C 30 36 30 30 1C 33 30 38 30 03 30 32 33 38 H.0600.3080.0238\r\n");
  file().clear();
  line.answer({{"<C8>b<ETX>0000"}});
  z->ExecuteCMD(72);
  EXPECT_EQ(file().substr(file().find("ReadStatus")),
            "ReadStatus" + stamp +
                "C8 62 03 30 30 30 30                            \xC8"
                "b.0000\r\n");
  file().clear();
  line.answer({{"xy<STX>!H<FS>0<ETX>0000"}});  // another sequence: junk in front is cut away, the STX stays
  z->ExecuteCMD(72);
  EXPECT_EQ(file().substr(file().find("ReadStatus")),
            "ReadStatus" + stamp + "02 21 48 1C 30 03 30 30 30 30                   .!H.0.0000\r\n");
  file().clear();
  z->verifyCheckSum = true;  // the same when the checksum is wrong
  line.answer({{"xy<STX>%H<FS>0<ETX>0000"}});
  z->ExecuteCMD(72);
  EXPECT_EQ(file().substr(file().find("ReadStatus")),
            "ReadStatus" + stamp + "02 25 48 1C 30 03 30 30 30 30                   .%H.0.0000\r\n");
  file().clear();
  line.answer({{"<WAIT>"}});
  z->ExecuteCMD(72);  // nothing received, no dump line
  EXPECT_EQ(file().substr(file().find("ReadStatus")), "ReadStatus" + stamp);
  file().clear();
  z->Reset();
  EXPECT_EQ(file(), "Send" + stamp + "07 08 09 0A 0B 0C 0D 0E 0F 10 11                ...........\r\n");
}

TEST_F(TraceTest, AssignmentsOpenAndCloseTheFile) {
  EXPECT_FALSE(z->DebugMode().boolean());
  z->DebugMode(true);
  EXPECT_EQ(openFiles(), 1);
  z->DebugMode(-1);
  EXPECT_EQ(openFiles(), 1);
  EXPECT_EQ(errorOf([&] { z->DebugMode(u"maybe"); }), 13);
  EXPECT_EQ(openFiles(), 0);
  z->ExecuteCMD(72);
  EXPECT_EQ(file(), "");
}

TEST_F(TraceTest, TheSettingForcesTheTraceForTheObjectsLife) {
  for (const char16_t* value : {u"1", u"00", u" 0", u"no"}) {
    setting("DebugZT", value);
    renew().DebugMode(false);
    EXPECT_TRUE(z->DebugMode().boolean());
    EXPECT_EQ(openFiles(), 1);
  }
  setting("DebugZT", u"0");
  renew();
  EXPECT_FALSE(z->DebugMode().boolean());
  EXPECT_EQ(openFiles(), 0);
}

TEST_F(TraceTest, AFileThatFailsReachesTheCallerAndNothingElseBreaks) {
  platform.files.openError = std::make_error_code(std::errc::permission_denied);
  EXPECT_EQ(errorOf([&] { z->DebugMode(true); }), 75);
  EXPECT_FALSE(z->DebugMode().boolean());
  setting("DebugZT", u"1");
  EXPECT_EQ(errorOf([] { CZentaro(); }), 75);
  platform.files.openError = {};

  z->DebugMode(true);
  platform.files.writeError = std::make_error_code(std::errc::no_space_on_device);
  EXPECT_EQ(errorOf([&] { z->ExecuteCMD(72); }), 61);
  EXPECT_TRUE(line.written.empty());
  platform.files.writeError = {};
  platform.host.onYield = [&, yields = 0]() mutable {  // eleven while it writes, the next one while it reads
    if (++yields == 12) platform.files.writeError = std::make_error_code(std::errc::no_space_on_device);
  };
  line.answer({{ok('#', 'H')}});
  EXPECT_EQ(errorOf([&] { z->ExecuteCMD(72); }), 61);
  EXPECT_EQ(z->dwordPrinterStatus, 0) << "dumped before the status words are stored";
  z->DebugMode(false);
  line.answer({{ok('$', 'H')}});
  EXPECT_EQ(z->ExecuteCMD(72), 0);
}

}  // namespace zentaro::testing::trace_test
