// The printer's packed date and time texts.
#pragma once

#include <string>

#include "automation/date.h"

namespace zentaro::General {

/// `dateText` is year, month and day in two digits each, of this century; `timeText` begins with
/// hour and minute. The seconds are always 0. Raises 13 (type mismatch) when they form no date and
/// time.
Date MakeDateTime(const std::u16string& dateText, const std::u16string& timeText);

/// The same, with the last two characters of `timeText` as the seconds.
Date MakeDateTimeWithSeconds(const std::u16string& dateText, const std::u16string& timeText);

}  // namespace zentaro::General
