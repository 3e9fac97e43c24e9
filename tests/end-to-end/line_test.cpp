// What a real line does to the printer object: absent, busy and vanishing devices.
#include <gtest/gtest.h>

#include "automation/automation_error.h"
#include "tools/connection/connection.h"

namespace zentaro::testing::line_test {

std::string openingError(const std::string& device) {
  try {
    tools::Connection connection(tools::PortOptions{.port = {}, .device = device, .timeout = {}});
  } catch (const AutomationError& error) {
    return std::to_string(error.number()) + " " + error.what();
  }
  return "open";
}

TEST(Line, ADeviceThatCannotBeOpenedIsNamedByTheSystem) {
  EXPECT_EQ(openingError("/dev/zentaro-absent"),
            "40001 Error (2): CommOpen (CreateFile) - No such file or directory");
  EXPECT_EQ(openingError("/dev/null"),
            "40001 Error (25): CommOpen (CreateFile) - Inappropriate ioctl for device");
  tools::VirtualPrinter printer;
  tools::Connection first(tools::PortOptions{.port = {}, .device = printer.device(), .timeout = {}});
  // Another process would find it as busy as another port of this one.
  CZentaro second;
  second.CommPort = 1;
  EXPECT_THROW(second.PortOpen(true), AutomationError);
  second.isPortOpen = false;
}

TEST(Line, APrinterThatVanishesIsATimeOutAndItsReturnIsNoticed) {
  auto printer = std::make_unique<tools::VirtualPrinter>();
  tools::Connection connection(tools::PortOptions{.port = {}, .device = printer->device(), .timeout = 1});
  CZentaro& z = connection.printer();
  EXPECT_EQ(z.StatusIF(u"N").int32(), 0);
  printer.reset();
  EXPECT_EQ(z.StatusIF(u"N").int32(), 1);
  EXPECT_EQ(z.CortarPapel(), 1);
  z.PortOpen(false);
  EXPECT_THROW(z.PortOpen(true), AutomationError);
  z.PortOpen(false);
}

}  // namespace zentaro::testing::line_test
