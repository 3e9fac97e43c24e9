// The port property in all its failures, and the life of a printer object.
#include <gtest/gtest.h>

#include "support/printer_fixture.h"

namespace zentaro::testing::object_test {

class ObjectTest : public PrinterTest {
 protected:
  ObjectTest() {
    z->PortOpen(false);
    line.opened.clear();
    line.closed = 0;
  }
  // "number source: description" of what opening raises, or "open".
  std::string opening() {
    try {
      z->PortOpen(true);
    } catch (const AutomationError& error) {
      return std::to_string(error.number()) + " " + utf8(error.source()) + ": " + error.what();
    }
    return "open";
  }
};

TEST_F(ObjectTest, AFailedOpeningStaysOpenUntilItIsClosed) {
  struct Row {
    const char* name;
    Variant port;
    std::string raised;
  };
  const Row rows[] = {
      {"no port", Variant(), "40001 CZentaro.Let PortOpen: Puerto serial no asignado"},
      {"port 0 as text", u"0", "40001 CZentaro.Let PortOpen: Puerto serial no asignado"},
      {"no number", u"COM1", "13 Zentaro: Type mismatch"},
      {"beyond 16 bits", 40000, "6 Zentaro: Overflow"},
      {"Null", Variant::null(), "94 Zentaro: Invalid use of Null"},
  };
  for (const Row& row : rows) {
    z->CommPort = row.port;
    EXPECT_EQ(opening(), row.raised) << row.name;
    EXPECT_TRUE(z->PortOpen()) << row.name;
    EXPECT_EQ(opening(), "open") << row.name;  // it is as asked: nothing happens
    errorOf([&] { z->PortOpen(false); });
    EXPECT_FALSE(z->isPortOpen) << row.name;
  }
  EXPECT_TRUE(line.opened.empty());
}

TEST_F(ObjectTest, TheDriversTextReachesTheHost) {
  line.canOpen = false;
  z->CommPort = u" 2";
  EXPECT_EQ(opening(), "40001 CZentaro.Let PortOpen: Error (2): CommOpen (CreateFile) - No such device");
  EXPECT_EQ(line.opened, std::vector<std::string>{"COM 2"});
  EXPECT_EQ(z->ExecuteCMD(72), 1);  // it counts as open, so the exchange runs into the time-out
  z->PortOpen(false);
  line.canOpen = true;
  EXPECT_EQ(opening(), "open");

  CZentaro second;
  second.CommPort = 2;
  EXPECT_EQ(errorOf([&] { second.PortOpen(true); }), 40001);
  second.isPortOpen = false;  // not its port to close

  z->CommPort = 0.4;  // is not 0, as a number of a port it is
  z->isPortOpen = false;
  EXPECT_EQ(
      opening().find("40001 CZentaro.Let PortOpen: Error (9): CommOpen - Subscript out of range LINEA "), 0U);
  z->CommPort = 2;
}

TEST_F(ObjectTest, AnotherPortNumberLeadsAwayFromTheOpenPort) {
  z->PortOpen(true);
  z->CommPort = 7;
  EXPECT_EQ(z->ExecuteCMD(72), 1);
  EXPECT_TRUE(line.written.empty());
  z->PortOpen(false);
  EXPECT_EQ(line.closed, 0) << "the port that was opened stays with the driver";
  z->CommPort = 1;
  EXPECT_EQ(errorOf([&] { z->PortOpen(true); }), 40001);
  z->PortOpen(false);
  EXPECT_EQ(line.closed, 1);
}

TEST_F(ObjectTest, ClosingWhatIsClosedLeavesTheDriversTraceOn) {
  platform.settings.values[{R"(Config\ModComm)", "DEBUG"}] = u"1";
  platform.settings.values[{R"(Config\ModComm)", "DumpFile"}] = u"driver.txt";
  CZentaro second;
  second.CommPort = 9;
  EXPECT_EQ(errorOf([&] { second.PortOpen(true); }), 40001);
  EXPECT_EQ(platform.files.openFiles, 1);
  z->PortOpen(false);
  EXPECT_EQ(platform.files.openFiles, 1);
  second.PortOpen(false);
  EXPECT_EQ(platform.files.openFiles, 0);
}

TEST_F(ObjectTest, WhatIsWrittenAndTracedIsTheDriversOwn) {
  platform.settings.values[{R"(Config\ModComm)", "DEBUG"}] = u"1";
  platform.settings.values[{R"(Config\ModComm)", "DumpFile"}] = u"driver.txt";
  CZentaro second;
  second.CommPort = 9;
  EXPECT_EQ(errorOf([&] { second.PortOpen(true); }), 40001);
  second.isPortOpen = false;
  z->PortOpen(true);
  Variant frame = std::u16string(40, u'a');
  platform.host.onYield = [&] { frame = 7; };  // the host's variable changes while the frame leaves
  z->ExecuteOMB(frame);
  EXPECT_EQ(line.written.back(), std::string(40, 'a'));
  EXPECT_TRUE(platform.files.contents["driver.txt"].ends_with("aaaaaaaa\r\n"));
}

TEST_F(ObjectTest, DestructionClosesWhatIsOpen) {
  z->CommPort = 3;
  z->PortOpen(true);
  z->PortOpen(true);
  EXPECT_EQ(line.opened.size(), 1U);
  z = std::make_unique<CZentaro>();
  EXPECT_EQ(line.closed, 1);
  z->CommPort = u"x";
  z->isPortOpen = true;
  z = std::make_unique<CZentaro>();  // a port that does not convert is nothing to raise about here
}

TEST_F(ObjectTest, LineSettingsAreFixed) {
  z->Settings(u"115200,e,7,2");
  EXPECT_EQ(z->Settings().text(), u"9600,n,8,1");
  EXPECT_EQ(z->PrinterType(), u"EPSON TMU");
}

}  // namespace zentaro::testing::object_test
