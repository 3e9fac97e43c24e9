// The driver on a scripted system; every port is closed again and the trace stopped when a test is over.
#pragma once

#include <gtest/gtest.h>

#include "driver/scripted_serial.h"
#include "serial/modCOMM.h"
#include "support/values.h"
#include "text/unicode.h"

namespace zentaro::testing {

class DriverTest : public ::testing::Test {
 protected:
  const std::u16string lineText = u"baud=9600 parity=N data=8 stop=1";
  ScriptedSerial serial;
  FakePlatform platform{&serial};
  std::u16string data;

  /// Opens port 1 as handle 7.
  void openPort() {
    serial.isFree = true;
    EXPECT_EQ(modCOMM::CommOpen(1, u"COM1", lineText), 0);
    serial.isFree = false;
  }
  /// The driver trace goes to `path` from here on, the ports are as they were.
  void startTrace(const std::u16string& path) {
    platform.settings.values[{"Config\\ModComm", "DEBUG"}] = u"1";
    platform.settings.values[{"Config\\ModComm", "DumpFile"}] = path;
    EXPECT_EQ(modCOMM::CommOpen(0, u"COM0", lineText), 9);
  }
  static std::string errorText() {
    std::u16string text;
    modCOMM::CommErrorText(text);
    return utf8(text);
  }

  void TearDown() override {
    serial.isFree = true;
    for (std::int16_t port = 1; port <= 8; ++port) EXPECT_EQ(modCOMM::CommClose(port), 0);
  }
};

}  // namespace zentaro::testing
