// The outcome codes of a transaction and their texts.
#pragma once

#include <cstdint>
#include <string>

#include "zentaro_api.h"

namespace zentaro {

/// 32 bits wide; a host may store any other value in `nEnvironmentError`.
enum ENVERR_CODES : std::int32_t {
  ENVERR_DEVICE = -1,   // returned, never stored: the port is closed
  ENVERR_OK = 0,        // a valid answer, bit 15 clear in both status words
  ENVERR_COMM = 1,      // no complete answer before the deadline
  ENVERR_INVALID = 2,   // the received text holds no STX
  ENVERR_CHECKSUM = 3,  // wrong answer checksum while `verifyCheckSum` is True
  ENVERR_BADSEQ = 4,    // the answer to another frame
  ENVERR_STATUS = 5,    // a valid answer, bit 15 set in either status word; its fields are stored
  ENVERR_BADARG = 6,    // an argument was rejected before anything was sent
};

/// "OK", "TIEMPO AGOTADO" and so on; "envErrInvalido (9)" for a value outside -1 to 6.
ZENTARO_API std::u16string outcomeText(ENVERR_CODES outcome);

}  // namespace zentaro
