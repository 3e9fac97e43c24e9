// A printer object with its port open on a scripted line, and a small language to talk about both.
#pragma once

#include <memory>

#include "automation/conversions.h"
#include "printer/czentaro.h"
#include "support/line.h"
#include "support/values.h"

namespace zentaro::testing {

/// A command code as its letter, or as "<A0>" when it is above those.
inline std::string shownCode(char code) {
  char text[8] = {code};
  if ((code & 0x80) != 0) std::snprintf(text, sizeof text, "<%02X>", static_cast<unsigned char>(code));
  return text;
}

/// A frame between its sequence number and its checksum, with FS shown as "|" and DEL as "~".
inline std::string shown(const std::string& frame) {
  std::string text = frame.size() > 7 ? frame.substr(2, frame.find('\x03') - 2) : frame;
  std::replace(text.begin(), text.end(), '\x1C', '|');
  std::replace(text.begin(), text.end(), '\x7F', '~');
  return shownCode(text[0]) + utf8(windows1252().text(text.substr(1)));
}

class PrinterTest : public LineTest {
 protected:
  PrinterTest() { renew(); }

  void setting(const std::string& key, const std::u16string& value) {
    platform.settings.values[{R"(Config\EPSONZT)", key}] = value;
  }
  /// A new object that reads the settings afresh; its next frame carries the sequence number 0x22 (").
  CZentaro& renew() {
    z.reset();
    z = std::make_unique<CZentaro>();
    z->CommPort = 1;
    z->PortOpen(true);
    line.written.clear();
    return *z;
  }

  std::string sent() const { return line.written.empty() ? "nothing" : shown(line.written.back()); }

  /// An answer to the frame with that sequence character whose checksum nobody looks at.
  static std::string ok(char sequence, char command, const std::string& fields = "") {
    return std::string("<STX>") + sequence + command + "<FS>0600<FS>3080" + fields + "<ETX>0000";
  }
  std::string element(int index) const { return shownValue(z->response(index)); }

  static std::string shownValue(const Variant& value) {
    return value.is(Variant::Kind::Text)    ? utf8(value.text())
           : value.is(Variant::Kind::Empty) ? "(empty)"
                                            : "(number)";
  }

  std::unique_ptr<CZentaro> z;
};

}  // namespace zentaro::testing
