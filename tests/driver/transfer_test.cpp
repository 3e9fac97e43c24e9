// Reading and writing: sizes, completion waits, failures, yields, and the code page.
#include <stdexcept>

#include "driver/driver_fixture.h"

namespace zentaro::testing::transfer_test {

using modCOMM::CommRead;
using modCOMM::CommWrite;

class DriverTransfer : public DriverTest {
 protected:
  void SetUp() override { openPort(); }
};

TEST_F(DriverTransfer, ReadAsksForAllThatWaitsButNoMoreThanItsBuffer) {
  struct Row {
    std::uint32_t waiting;
    std::int32_t wanted;
    int asked;
  };
  for (const Row& row :
       {Row{5, 4096, 4096}, {5, 2, 5}, {10, 0, 10}, {10, -1, 10}, {5000, 1, 4096}, {5, 99999, 4096}}) {
    serial.expect("ClearCommError 7", {.count = row.waiting})
        .expect("ReadFile 7 " + std::to_string(row.asked), {.data = "ab\x80\xE9\x81"});
    EXPECT_EQ(CommRead(1, data, row.wanted), 5);
    EXPECT_EQ(data, u"ab\u20AC\u00E9\u0081");
  }
  EXPECT_EQ(platform.host.yields, 6);
}

TEST_F(DriverTransfer, ReadWithNothingWaitingIsNoCallAndNoData) {
  data = u"old";
  serial.expect("ClearCommError 7");
  EXPECT_EQ(CommRead(1, data, 4096), 0);
  EXPECT_TRUE(data.empty());
}

TEST_F(DriverTransfer, FailedReadReportsTheLineErrors) {
  serial.expect("ClearCommError 7", {.count = 3})
      .expect("ReadFile 7 10", {.error = 5})
      .expect("ClearCommError 7", {.flags = 0x1A});
  EXPECT_EQ(CommRead(1, data, 10), -1);
  EXPECT_EQ(errorText(), "Error (5): CommRead (ReadFile) - Access denied.  COMM Error Flags = 1A");
}

TEST_F(DriverTransfer, PendingReadIsWaitedForUntilItIsComplete) {
  serial.expect("ClearCommError 7", {.count = 3})
      .expect("ReadFile 7 3", {.error = 997, .data = "xyz"})
      .expect("GetOverlappedResult 7 1", {.error = 996})
      .expect("GetOverlappedResult 7 1", {.error = 996})
      .expect("GetOverlappedResult 7 1", {.count = 2});
  EXPECT_EQ(CommRead(1, data, 3), 2);
  EXPECT_EQ(data, u"xy");

  serial.expect("ClearCommError 7", {.count = 3})
      .expect("ReadFile 7 3", {.error = 997})
      .expect("GetOverlappedResult 7 1", {.error = 31})
      .expect("ClearCommError 7", {.error = 5});
  EXPECT_EQ(CommRead(1, data, 3), -1);
  EXPECT_TRUE(data.empty());
  EXPECT_EQ(errorText(), "Error (31): CommRead (GetOverlappedResult) - Broken  COMM Error Flags = 0");

  serial.expect("ClearCommError 7", {.count = 3})
      .expect("ReadFile 7 3", {.error = 997})
      .expect("GetOverlappedResult 7 1", {.count = 2, .fails = true})
      .expect("ClearCommError 7");
  EXPECT_EQ(CommRead(1, data, 3), -1) << "a failure whose code is 0 is one";
  EXPECT_EQ(errorText(), "Error (0): CommRead (GetOverlappedResult) -   COMM Error Flags = 0");
}

TEST_F(DriverTransfer, AWriteEndsAsItsCallsSay) {
  const struct {
    const char* name;
    Answer write;
    std::vector<Answer> waits;
    std::int32_t result;
    int yields;
    std::string error;  // the text of the last-error record; empty when it must stay as it was
  } rows[] = {
      {"success", {.count = 3}, {}, 3, 11, ""},
      {"out of time", {.count = 1}, {}, 1, 11, ""},
      {"failure without code", {.count = 2, .fails = true}, {}, 2, 1, ""},
      {"failure", {.error = 5, .count = 2}, {}, -1, 1, "Error (5): CommWrite (WriteFile) - Access denied."},
      {"pending", {.error = 997}, {{.error = 996}, {.count = 3}}, 3, 11, ""},
      {"pending, fails",
       {.error = 997},
       {{.error = 31, .count = 1}},
       1,
       1,
       "Error (31): CommWrite (GetOverlappedResult) - Broken"},
      {"pending, fails without a code",
       {.error = 997},
       {{.count = 2, .fails = true}},
       2,
       1,
       "Error (0): CommWrite (GetOverlappedResult) - "},
  };
  for (const auto& row : rows) {
    const std::string before = errorText();
    platform.host.yields = 0;
    serial.expect("WriteFile \x02?\xE9 7", row.write);
    for (const Answer& wait : row.waits) serial.expect("GetOverlappedResult 7 1", wait);
    if (!row.error.empty()) serial.expect("ClearCommError 7", {.flags = 2});
    EXPECT_EQ(CommWrite(1, u"\u0002\u4E2D\u00E9"), row.result) << row.name;
    EXPECT_EQ(platform.host.yields, row.yields) << row.name;
    EXPECT_EQ(errorText(), row.error.empty() ? before : row.error + "  COMM Error Flags = 2") << row.name;
  }
}

TEST_F(DriverTransfer, CodeOfAFailureSurvivesCallsThatTheHostMakesMeanwhile) {
  platform.host.onYield = [&] {
    platform.host.onYield = nullptr;
    serial.expect("ClearCommError 7", {.error = 31});
    EXPECT_EQ(CommRead(1, data, 1), -1);
    serial.expect("ClearCommError 7");
  };
  serial.expect("WriteFile a 7", {.error = 5});
  EXPECT_EQ(CommWrite(1, u"a"), -1);
  EXPECT_EQ(errorText(), "Error (5): CommWrite (WriteFile) - Access denied.  COMM Error Flags = 0");
}

TEST_F(DriverTransfer, WhatTheHostThrowsPassesThroughAndTheNextTransferWorks) {
  platform.host.onYield = [] { throw std::runtime_error("host"); };
  EXPECT_THROW(CommRead(1, data, 4096), std::runtime_error);
  serial.expect("WriteFile a 7", {.count = 1});
  EXPECT_THROW(CommWrite(1, u"a"), std::runtime_error);

  platform.host.onYield = nullptr;
  serial.expect("ClearCommError 7", {.count = 1}).expect("ReadFile 7 4096", {.data = "z"});
  EXPECT_EQ(CommRead(1, data, 4096), 1);
  EXPECT_EQ(data, u"z");
}

}  // namespace zentaro::testing::transfer_test
