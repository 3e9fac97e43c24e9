// What becomes of a thread's ports when it ends, and what still works after that.
#include <gtest/gtest.h>

#include <thread>

#include "platform/per_thread.h"
#include "platform/pseudo_terminal.h"
#include "serial/modCOMM.h"
#include "text/unicode.h"

namespace zentaro::testing::thread_end_test {

const std::u16string lineText = u"baud=9600 parity=N data=8 stop=1";

TEST(ThreadEnd, ClosesThePortsThatWereLeftOpen) {
  const PseudoTerminal printer;
  const std::u16string device = utf16(printer.device());
  std::thread([&] { EXPECT_EQ(modCOMM::CommOpen(1, device, lineText), 0); }).join();
  EXPECT_EQ(modCOMM::CommOpen(1, device, lineText), 0) << "still busy";
  EXPECT_EQ(modCOMM::CommClose(1), 0);
}

/// Stands for a printer object in a variable of the host's.
struct LateUser {
  std::string* log = nullptr;
  ~LateUser() {
    std::u16string data;
    *log += std::to_string(modCOMM::CommClose(1)) + " " + std::to_string(modCOMM::CommRead(2, data, 10));
    modCOMM::CommErrorText(data);
    *log += " " + utf8(data) + "\n";
  }
};

TEST(ThreadEnd, IsNoHarmToObjectsThatAreDestroyedLater) {
  const PseudoTerminal printer;
  std::string log;
  std::thread([&] {
    perThread<LateUser>().log = &log;  // made before the driver's state, so destroyed after it
    thread_local LateUser user;
    user.log = &log;
    EXPECT_EQ(modCOMM::CommOpen(1, utf16(printer.device()), lineText), 0);
    EXPECT_EQ(modCOMM::CommOpen(1, u"again", lineText), -1);
  }).join();
  const std::string line = "0 -1 Error (9): CommRead (ClearCommError) - Bad file descriptor\n";
  EXPECT_EQ(log, line + line);
}

}  // namespace zentaro::testing::thread_end_test
