// A printer object with its port open on a scripted line, and a small language to talk about both.
#pragma once

#include <memory>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "printer/czentaro.h"
#include "support/line.h"

namespace zentaro::testing {

/// A frame between its sequence number and its checksum, with FS shown as "|" and DEL as "~".
inline std::string shown(const std::string& frame) {
  std::string text = frame.size() > 7 ? frame.substr(2, frame.find('\x03') - 2) : frame;
  std::replace(text.begin(), text.end(), '\x1C', '|');
  std::replace(text.begin(), text.end(), '\x7F', '~');
  return text;
}

class PrinterTest : public ::testing::Test {
 protected:
  FakePlatform platform;
  FakeLine line{platform.clock};

  PrinterTest() {
    services_ = services();
    services_.serial = &line;
    scope_ = std::make_unique<ServicesScope>(services_);
    z = std::make_unique<CZentaro>();
    z->CommPort = 1;
    z->PortOpen(true);
  }
  ~PrinterTest() override {
    z.reset();
    scope_.reset();
  }

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
  std::string element(int index) const { return utf8(toTextOrKind(z->response(index))); }

  static std::u16string toTextOrKind(const Variant& value) {
    return value.is(Variant::Kind::Text)    ? value.text()
           : value.is(Variant::Kind::Empty) ? u"(empty)"
                                            : u"(number)";
  }

  std::unique_ptr<CZentaro> z;

 private:
  Services services_{};
  std::unique_ptr<ServicesScope> scope_;
};

/// The number of the automation error that `call` raises, 0 for none.
template <class Call>
int raised(Call call) {
  try {
    call();
  } catch (const AutomationError& error) {
    return error.number();
  }
  return 0;
}

}  // namespace zentaro::testing
