// Opening, configuring and closing a port, the last-error record, and waiting for input.
#include <thread>

#include "driver/driver_fixture.h"

namespace zentaro::testing::open_close_test {

using namespace std::chrono_literals;
using modCOMM::CommClose;
using modCOMM::CommOpen;
using modCOMM::CommRead;
using modCOMM::CommWrite;

struct OpenStep {
  std::string call, function;
};
const std::vector<OpenStep> openSteps{
    {"CreateFileA COM1 3221225472 0 3 128", "CreateFile"},
    {"SetupComm 7 1024 1024", "SetupComm"},
    {"PurgeComm 7 15", "PurgeComm"},
    {"SetCommTimeouts 7 4294967295 0 1000 1000 0", "SetCommTimeouts"},
    {"GetCommState 7", "GetCommState"},
    {"BuildCommDCBA baud=9600 parity=N data=8 stop=1", "BuildCommDCB"},
    {"SetCommState 7 9600 90", "SetCommState"},
};

class DriverOpening : public DriverTest {};

TEST_F(DriverOpening, MakesItsCallsInOrderAndIsRefusedWhileOpen) {
  for (const auto& step : openSteps) serial.expect(step.call);
  EXPECT_EQ(CommOpen(1, u"COM1", lineText), 0);
  EXPECT_TRUE(platform.settings.reads.empty()) << "a success must not touch the trace";

  EXPECT_EQ(CommOpen(1, u"COM1", lineText), -1);
  EXPECT_EQ(errorText(), "Error (-1): CommOpen - Port in use.");
  EXPECT_EQ(platform.settings.reads, std::vector<std::string>{"DEBUG"});

  serial.expect("CloseHandle 7", {.error = 31});
  EXPECT_EQ(CommClose(1), 31);
  EXPECT_EQ(errorText(), "Error (31): CommClose (CloseHandle) - Broken");
  serial.expect("CloseHandle 7");
  EXPECT_EQ(CommClose(1), 0);
  EXPECT_EQ(CommClose(1), 0);
  serial.expect("ClearCommError 7", {.error = 31});
  EXPECT_EQ(CommRead(1, data, 1), -1) << "the entry keeps its handle";
}

TEST_F(DriverOpening, EndsWithTheStepThatFailsAndLeavesADeviceToClose) {
  for (std::size_t failing = 0; failing < openSteps.size(); ++failing) {
    for (std::size_t step = 0; step < failing; ++step) serial.expect(openSteps[step].call);
    serial.expect(openSteps[failing].call, {.error = 5});
    EXPECT_EQ(CommOpen(1, u"COM1", lineText), 5);
    EXPECT_EQ(errorText(), "Error (5): CommOpen (" + openSteps[failing].function + ") - Access denied.");

    const bool hasDevice = failing > 0;
    serial.expect("ClearCommError " + std::string(hasDevice ? "7" : "-1"), {.error = 99});
    EXPECT_EQ(CommRead(1, data, 1), -1);
    EXPECT_EQ(errorText(), "Error (99): CommRead (ClearCommError) - ");
    if (hasDevice) {
      EXPECT_EQ(CommOpen(1, u"COM1", lineText), -1);
      serial.expect("CloseHandle 7");
    }
    EXPECT_EQ(CommClose(1), 0);
  }
}

TEST_F(DriverOpening, PortNumberOutsideTheTableIsAFaultOfEveryOperation) {
  for (const std::int16_t port : {std::int16_t{0}, std::int16_t{9}, std::int16_t{-1}}) {
    EXPECT_EQ(CommOpen(port, u"COM9", lineText), 9);
    const std::string text = errorText(), start = "Error (9): CommOpen - Subscript out of range LINEA ";
    ASSERT_TRUE(text.starts_with(start)) << text;
    EXPECT_GT(std::stoi(text.substr(start.size())), 0);
    EXPECT_EQ(CommClose(port), 9);
    EXPECT_EQ(errorText(), "Error (9): CommClose - Subscript out of range");
    data = u"left over";
    EXPECT_EQ(CommRead(port, data, 4096), -1);
    EXPECT_EQ(errorText(), "Error (9): CommRead - Subscript out of range");
    EXPECT_TRUE(data.empty());
    EXPECT_EQ(CommWrite(port, u"x"), 0);
    EXPECT_EQ(errorText(), "Error (9): CommWrite - Subscript out of range");
  }
}

TEST_F(DriverOpening, EachThreadHasItsOwnPortsRecordAndTrace) {
  openPort();
  EXPECT_EQ(CommOpen(1, u"COM1", lineText), -1);
  startTrace(u"t");
  std::thread([] {
    EXPECT_EQ(errorText(), "Error (0):  - ");
    EXPECT_EQ(CommClose(1), 0);
  }).join();
  EXPECT_EQ(platform.files.openFiles, 1) << "the other thread must not have ended the trace";
  EXPECT_EQ(CommOpen(1, u"COM1", lineText), -1) << "the other thread must not have closed it";
}

TEST_F(DriverOpening, WaitIsBoundedAndNeverUsesAClosedPort) {
  const auto wait = [&](std::int16_t port, std::chrono::milliseconds limit) {
    modCOMM::CommWait(port, limit);
    return serial.waits.back();
  };
  EXPECT_EQ(wait(1, 100ms), "-1 100");
  EXPECT_EQ(wait(9, 100ms), "-1 100");
  openPort();
  EXPECT_EQ(wait(1, 100ms), "7 100");
  EXPECT_EQ(wait(1, 12s), "7 250");
  EXPECT_EQ(wait(1, -5ms), "7 0");
  platform.host.onYield = [] {};
  EXPECT_EQ(wait(1, 12s), "7 9");
  EXPECT_EQ(platform.host.yields, 0);
}

}  // namespace zentaro::testing::open_close_test
