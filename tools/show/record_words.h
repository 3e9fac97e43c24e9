// What the values of records are called for people.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "automation/object.h"

namespace zentaro::tools {

struct RecordRow {
  std::string_view member;
  std::string words, value;  // what it is; an amount with two decimals, or with four when it has more
};

/// What a record holds, in its order.
std::vector<RecordRow> recordRows(const Object& record);

/// Words, value and name of the member, a value a line, in less than 80 columns.
std::string recordTable(const std::vector<RecordRow>& rows);

}  // namespace zentaro::tools
