// Whether an answer that passed the checks of the frame is the answer to what was sent.
#pragma once

#include <vector>

#include "automation/description.h"
#include "printer/czentaro.h"
#include "till/line/recovery.h"

namespace zentaro::till {

/// What came of a status request that ended with this outcome and left these answer fields. An answer has its
/// command code, two hexadecimal status words, values (none in a refusal) and the checksum; on a line that
/// returns what is sent the request's own selector stands where the first status word belongs.
Heard heardOfStatus(ENVERR_CODES outcome, const Variant& fields);
/// The same of a request for the serial number.
Heard heardOfSerial(ENVERR_CODES outcome, const Variant& fields);

/// Whether the answer that is stored is one to the command that was sent last; true when none is stored. Of
/// cheques it is the answer to the cheque, behind which the slip station was switched off.
bool answersLastCommand(const CZentaro& printer);

/// Whether an error of that number may be raised when the command of the member has left already: by a trace, or
/// by a record that cannot be filled from the answer. An error of a conversion comes before the command.
bool mayBeRaisedBehindTheCommand(int error, const Member& member);
/// Of a member that hands out no record.
bool mayBeRaisedBehindTheCommand(int error);

/// What a member has to do with being in step.
enum class Stepping {
  None,     // it talks to no printer, or sends what the user has numbered
  Own,      // it is a status request, which itself shows whether line and program are in step
  Required  // line and program have to be in step before it is sent
};
Stepping steppingOf(const Member& member, const std::vector<Variant>& arguments);

}  // namespace zentaro::till
