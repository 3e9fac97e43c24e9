// Values, outcomes and answers as people and scripts see them.
#pragma once

#include <string>
#include <string_view>

#include "automation/variant.h"
#include "common/json.h"
#include "printer/czentaro.h"

namespace zentaro::tools {

/// One line: control characters as "\x02", dates in ISO form, amounts with four decimals, a record
/// as "name value, ...".
std::string valueText(const Variant& value);
/// The same as JSON for scripts: a text for dates and currency amounts, null for what holds no value, an
/// object for a record.
Json valueJson(const Variant& value);

/// What a record holds, one value a line behind `indent`: name, value, and what it is.
std::string recordTable(const Object& record, std::string_view indent);

/// "0 OK", "1 TIEMPO AGOTADO".
std::string outcomeLine(ENVERR_CODES outcome);
/// "0x8000".
std::string hexWord(std::int32_t word);

/// Status words, the printer's own error text and the answer fields of the last transaction, one a line.
std::string answerText(const CZentaro& printer);
/// The same, as the members "printerStatus", "fiscalStatus", "error", "command" and "fields".
Json answerJson(const CZentaro& printer);

}  // namespace zentaro::tools
