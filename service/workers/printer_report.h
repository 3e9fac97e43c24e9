// What is known of a printer: heard last, and not asked for anew.
#pragma once

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>

namespace zentaro::service {

enum class Condition {
  Ready,
  Busy,         // prints
  Unreachable,  // no port, or no answer
  Blocked       // answers, and needs a person
};

std::string_view nameOf(Condition condition);

/// How far the document is that is being printed.
struct Running {
  std::string id, label;
  std::size_t step = 0, steps = 0;
};

struct PrinterReport {
  std::string name, device;
  bool isVirtual = false;
  Condition condition = Condition::Unreachable;
  std::string cause, next;  // the printer's own text, and what a person does
  std::string machine;      // its serial number
  std::optional<std::int64_t> lastInvoice, lastCreditNote, lastZ;
  std::int64_t booksMiss = 0;  // documents that it printed and the books do not know
  int document = 0;            // the state of the document that is open; 0: none
  std::time_t heard = 0;       // when it answered last; 0: never
  std::optional<Running> running;
};

}  // namespace zentaro::service
