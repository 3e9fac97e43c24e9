// Operations as rows: what is called, and what the printer must see of it.
#pragma once

#include <functional>

#include "support/printer_fixture.h"

namespace zentaro::testing {

struct Operation {
  const char* name;
  std::function<int(CZentaro&)> call;
  std::string expected;  // the frame as PrinterTest::shown gives it, or "nothing"
  int result = 1;        // the time-out, since nobody answers
};

inline void checkOperations(CZentaro& z, FakeLine& line, const std::vector<Operation>& operations) {
  for (const Operation& operation : operations) {
    line.written.clear();
    EXPECT_EQ(operation.call(z), operation.result) << operation.name;
    EXPECT_LE(line.written.size(), 1U) << operation.name;
    EXPECT_EQ(line.written.empty() ? "nothing" : shown(line.written.back()), operation.expected)
        << operation.name;
  }
}

/// What a rejected value raises; nothing is sent, and the sequence number has or has not advanced.
struct Rejection {
  const char* name;
  std::function<void(CZentaro&)> call;
  int error;
  bool advances = false;
};

inline void checkRejections(CZentaro& z, FakeLine& line, const std::vector<Rejection>& rejections) {
  const Array none{std::vector<Variant>()};
  for (const Rejection& rejection : rejections) {
    line.written.clear();
    const char16_t before = z.BuildOMB(0x48, none)[1];
    EXPECT_EQ(raised([&] { rejection.call(z); }), rejection.error) << rejection.name;
    EXPECT_TRUE(line.written.empty()) << rejection.name;
    const int steps = z.BuildOMB(0x48, none)[1] - before;
    EXPECT_EQ((steps + 95) % 95, rejection.advances ? 2 : 1) << rejection.name;
  }
}

}  // namespace zentaro::testing
