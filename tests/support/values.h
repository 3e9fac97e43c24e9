// What the tests of values share: the error that a call raises, and regional settings for one test.
#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "automation/automation_error.h"
#include "support/fakes.h"
#include "text/unicode.h"

namespace zentaro::testing {

/// The number of the automation error that `call` raises; 0 when it raises none.
template <class Call>
int errorOf(Call call) {
  try {
    call();
  } catch (const AutomationError& error) {
    return error.number();
  }
  return 0;
}

/// The value as UTF-8, or "error 13".
template <class Call>
std::string textOrError(Call call) {
  try {
    return utf8(call());
  } catch (const AutomationError& error) {
    return "error " + std::to_string(error.number());
  }
}

/// Point and comma, day first: what FakeRegional has by default.
struct PointRegion : FakePlatform {};

/// Comma and point, as in "1.234,5".
struct CommaRegion : FakePlatform {
  CommaRegion() {
    regional.settings.decimalSeparator = u',';
    regional.settings.groupSeparator = u'.';
  }
};

}  // namespace zentaro::testing
