// The printer behind the line: takes commands, gives answers, keeps the books. Knows no bytes, no clock, no
// files.
#pragma once

#include <functional>

#include "device/works.h"
#include "wire/frame.h"

namespace printer {

// Bits of the status words. They are this printer's own choice.
namespace printer_bit {
inline constexpr std::uint16_t coverOpen = 0x0004, paperNearEnd = 0x0010, paperOut = 0x0020, slipOn = 0x0100,
                               failure = 0x8000;
}
namespace fiscal_bit {
inline constexpr std::uint16_t invoiceOpen = 0x0001, creditNoteOpen = 0x0002, nonFiscalOpen = 0x0004,
                               partiallyClosed = 0x0008, paying = 0x0010, dayOpen = 0x0020,
                               memoryNearFull = 0x0040, memoryFull = 0x0080, closingRequired = 0x0100,
                               refused = 0x8000;
}

std::uint16_t printerStatus(const Works& works);
std::uint16_t fiscalStatus(const Works& works);

class Device {
 public:
  // Called whenever the books have changed, before the answer leaves.
  using SaveBooks = std::function<void(const Books&)>;

  Device(Identity identity, Books books, SaveBooks save);

  // hostTime is the true local time; the printer's own clock may have been set to another.
  Answer execute(const Command& command, LocalTime hostTime);
  // The unframed reset: an open document ends as cancelled, the slip station is off.
  void reset();
  // Power came back: a document that was open is printed as cancelled.
  void start(LocalTime hostTime);

  Roll& roll() { return works_.roll; }
  Conditions& conditions() { return works_.conditions; }
  const Works& works() const { return works_; }

 private:
  std::vector<std::string> run(const Command& command);
  void saveIfChanged();

  Works works_;
  Books saved_;
  SaveBooks save_;
};

}  // namespace printer
