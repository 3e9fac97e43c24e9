// The command codes of the serial protocol.
#pragma once

#include <cstdint>

namespace zentaro {

enum class Command : std::int16_t {
  Status = 0x38,
  Closing = 0x39,
  MemoryReport = 0x3A,
  OpenDocument = 0x40,  // an invoice, or with type "D" a credit note
  ExtraLine = 0x41,
  ItemLine = 0x42,
  Subtotal = 0x43,
  Payment = 0x44,  // third field: "T" payment, "D" discount, "C" cancellation
  CloseDocument = 0x45,
  OpenNonFiscal = 0x48,
  NonFiscalLine = 0x49,
  CloseNonFiscal = 0x4A,
  CutPaper = 0x4B,
  FeedPaper = 0x50,
  SetClock = 0x58,
  ReadClock = 0x59,
  HeaderLine = 0x5D,
  FooterLine = 0x5E,
  OpenDrawer1 = 0x7B,
  OpenDrawer2 = 0x7C,
  SerialNumber = 0x80,
  SlipOn = 0xA0,
  SlipOff = 0xA1,
  ChequeFace = 0xAA,
  ChequeEndorsement = 0xAB,
};

}  // namespace zentaro
