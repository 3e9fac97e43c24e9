// Judges a received text and cuts it into the answer fields.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "automation/variant.h"
#include "printer/outcome.h"
#include "text/code_page.h"

namespace zentaro {

struct Answer {
  ENVERR_CODES outcome = ENVERR_OK;
  std::int32_t printerStatus = 0;
  std::int32_t fiscalStatus = 0;
  /// The printer's own text ("ERROR ..."), or "VOID"; nothing when the text did not get as far as
  /// the checksum check.
  std::optional<std::u16string> errorText;
  /// 0 the command code as a number, 1 and 2 the status texts, 3 onward the non-empty fields, last
  /// the text behind the ETX. After a failure a single Empty element.
  Array fields;
  /// The part of the received text that the object trace shows: the answer from its command code on,
  /// or, after a failure, all of it (without the junk in front of an STX).
  std::u16string_view traced;

  bool failed() const { return outcome != ENVERR_OK && outcome != ENVERR_STATUS; }
};

/// No complete answer came: outcome 1.
Answer timedOut(std::u16string_view received);

/// The checks in their order: STX (outcome 2), checksum when `verifyCheckSum` asks for it (3),
/// sequence number (4), bit 15 of a status word (5). Never raises: a text that is cut short
/// anywhere gives what it holds.
Answer checkAnswer(std::u16string_view received, std::int16_t expectedSequence, bool verifyCheckSum,
                   const CodePage& codePage);

}  // namespace zentaro
