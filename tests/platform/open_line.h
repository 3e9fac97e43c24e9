// The serial services with a line open, of whatever kind, and a printer at its other end.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/services.h"

namespace zentaro::testing {

template <class Printer>
class OpenLine : public ::testing::Test {
 protected:
  template <class... Words>
  explicit OpenLine(Words... words) : printer(words...) {}
  ~OpenLine() override { serial.CloseHandle(handle); }

  SerialHandle open(const std::string& path) { return serial.CreateFileA(path, 0xC0000000, 0, 3, 0x80); }
  /// The bytes waiting; -1 when the call fails.
  int waiting() {
    std::uint32_t flags = 99, count = 0;
    if (!serial.ClearCommError(handle, flags, count)) return -1;
    EXPECT_EQ(flags, 0U);
    return static_cast<int>(count);
  }
  std::string read(std::uint32_t most) {
    std::string buffer(most, '\0');
    std::uint32_t count = 0;
    EXPECT_TRUE(serial.ReadFile(handle, buffer.data(), most, count, overlapped));
    return buffer.substr(0, count);
  }
  bool write(const std::string& bytes, std::uint32_t& written) {
    return serial.WriteFile(handle, bytes.data(), static_cast<std::uint32_t>(bytes.size()), written,
                            overlapped);
  }

  Printer printer;
  SerialServices& serial = *systemServices().serial;
  SerialHandle handle = open(printer.device());
  Overlapped overlapped;
};

}  // namespace zentaro::testing
