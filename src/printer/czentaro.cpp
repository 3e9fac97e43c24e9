// The printer object: creation, port, and the skeleton that every operation runs through.
#include "printer/czentaro.h"

#include <algorithm>
#include <utility>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "platform/setting_keys.h"
#include "printer/answer.h"
#include "printer/transaction.h"
#include "serial/modCOMM.h"

namespace zentaro {

namespace {

AutomationError portError(std::u16string description) {
  return {40001, u"CZentaro.Let PortOpen", std::move(description)};
}

bool isControl(char16_t character) { return character == STX || character == ETX || character == FS; }

/// A host's text can neither forge a field nor end the frame.
void replaceControlCharacters(Variant& field) {
  if (!field.is(Variant::Kind::Text) || std::ranges::none_of(field.text(), isControl)) return;
  std::u16string text = field.text();
  std::ranges::replace_if(text, isControl, u'.');
  field = std::move(text);
}

}  // namespace

CZentaro::CZentaro() {
  if (readSetting(settingObjectTrace) != u"0") trace_.force();
}

CZentaro::~CZentaro() {
  try {
    PortOpen(false);
  } catch (const AutomationError&) {
    // A CommPort that does not convert names no port to close.
  }
  trace_.release();
}

void CZentaro::DebugMode(const Variant& value) { trace_.assign(value); }
Variant CZentaro::DebugMode() const { return trace_.isOn(); }

std::u16string CZentaro::PrinterType() const { return u"EPSON TMU"; }
void CZentaro::Settings(const Variant& /*sNewSettings*/) {}
Variant CZentaro::Settings() const { return u"9600,n,8,1"; }

void CZentaro::PortOpen(bool bIsOpen) {
  if (bIsOpen == isPortOpen) return;
  isPortOpen = bIsOpen;  // required: before the port is touched; a failed opening stays open
  if (!bIsOpen) {
    modCOMM::CommClose(toInt16(CommPort));
    return;
  }
  if (toDouble(CommPort) == 0) throw portError(u"Puerto serial no asignado");
  const std::u16string device = u"COM" + toText(CommPort);
  if (modCOMM::CommOpen(toInt16(CommPort), device, u"baud=9600 parity=N data=8 stop=1") != 0) {
    std::u16string text;
    modCOMM::CommErrorText(text);
    throw portError(text);
  }
}

std::u16string CZentaro::BuildOMB(std::int16_t iCommandNumber, const Array& vaArgs) {
  nLastCommand = iCommandNumber;
  nSequence.advance();
  return buildFrame(nSequence.current(), iCommandNumber, vaArgs, *services().codePage);
}

void CZentaro::SendOMB(const Variant& frame) {
  trace_.TraceSend();
  std::u16string converted;
  // A frame of this object's is a text and need not be copied.
  const std::u16string& text = frame.is(Variant::Kind::Text) ? frame.text() : (converted = toText(frame));
  trace_.TraceDump(text);
  // A frame that did not leave shows up as an answer that never comes.
  modCOMM::CommWrite(toInt16(CommPort), text);
}

Variant CZentaro::ReadResponse() {
  dwordStatusFiscal = 0;
  dwordPrinterStatus = 0;
  nEnvironmentError = ENVERR_OK;
  trace_.TraceReadStatus();
  Receiver receiver;
  const bool complete = receiveAnswer(CommPort, settings_, receiver);
  // The sequence number as it stands now: a host that was yielded to may have built a frame.
  Answer answer =
      complete ? checkAnswer(receiver.text(), nSequence.current(), verifyCheckSum, *services().codePage)
               : timedOut(receiver.text());
  if (answer.errorText) sLastError = *answer.errorText;
  // required: an answer that passed is dumped before its status words are stored, any other one after.
  if (!answer.failed()) trace_.TraceDump(answer.traced);
  dwordPrinterStatus = answer.printerStatus;
  dwordStatusFiscal = answer.fiscalStatus;
  nEnvironmentError = answer.outcome;
  if (answer.failed()) trace_.TraceDump(answer.traced);
  return std::move(answer.fields);
}

Variant CZentaro::exchangeFrame(const Variant& frame) {
  SendOMB(frame);
  return ReadResponse();
}

Variant CZentaro::exchange(Command command, Fields fields) {
  for (Variant& field : fields.values) replaceControlCharacters(field);
  return exchangeFrame(BuildOMB(static_cast<std::int16_t>(command), Array(std::move(fields.values))));
}

std::int16_t CZentaro::keep(Variant answer) {
  vaResponse = std::move(answer);
  return outcome();
}

std::int16_t CZentaro::run(Command command, Fields fields) {
  return keep(exchange(command, std::move(fields)));
}

std::int16_t CZentaro::runCommand(Command command) { return ExecuteCMD(static_cast<std::int16_t>(command)); }

std::int16_t CZentaro::execute(const std::u16string& s) { return keep(exchangeFrame(s)); }

std::int16_t CZentaro::ExecuteCMD(const Variant& nCmd) {
  if (!isPortOpen) return ENVERR_DEVICE;
  return keep(exchangeFrame(BuildOMB(toInt16(nCmd), {})));
}

std::int16_t CZentaro::ExecuteOMB(const Variant& sOMB) {
  if (!isPortOpen) return ENVERR_DEVICE;
  return keep(exchangeFrame(sOMB));
}

}  // namespace zentaro
