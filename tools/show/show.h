// Values, outcomes and answers as people and scripts see them.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "automation/description.h"
#include "automation/variant.h"
#include "base/files/json_fwd.h"
#include "printer/czentaro.h"

namespace zentaro::tools {

/// One line: control characters as "\x02", dates in ISO form, amounts with four decimals, a record
/// as "name value, ...".
std::string valueText(const Variant& value);
/// The same as JSON for scripts: a text for dates and currency amounts, null for what holds no value, an
/// object for a record.
Json valueJson(const Variant& value);

/// Calls `add` with each member of the record that holds a value, and the value.
void forEachValue(const Object& record, const std::function<void(const Member&, const Variant&)>& add);

/// "0 OK", "1 TIEMPO AGOTADO".
std::string outcomeLine(ENVERR_CODES outcome);
/// "0x8000".
std::string hexWord(std::int32_t word);

/// Status words, the printer's own error text and the answer fields of the last transaction, one a line.
std::string answerText(const CZentaro& printer);
/// The same, as the members "printerStatus", "fiscalStatus", "error", "command" and "fields".
Json answerJson(const CZentaro& printer);

}  // namespace zentaro::tools
