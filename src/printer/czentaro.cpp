// The printer object: creation, port, and the skeleton that every operation runs through.
#include "printer/czentaro.h"

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

// A host's text can neither forge a field nor end the frame.
void replaceControlCharacters(Variant& field) {
  if (!field.is(Variant::Kind::Text)) return;
  std::u16string text = field.text();
  for (char16_t& character : text) {
    if (character == STX || character == ETX || character == FS) character = u'.';
  }
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
  trace_.send();
  if (trace_.isOn()) trace_.dump(toText(frame));
  const std::u16string text = toText(frame);
  // A frame that did not leave shows up as an answer that never comes.
  modCOMM::CommWrite(toInt16(CommPort), text);
}

Variant CZentaro::ReadResponse(std::int16_t expected) {
  dwordStatusFiscal = 0;
  dwordPrinterStatus = 0;
  nEnvironmentError = ENVERR_OK;
  trace_.readStatus();
  Receiver receiver;
  const bool complete = receiveAnswer(CommPort, settings_, receiver);
  Answer answer = complete ? checkAnswer(receiver.text(), expected, verifyCheckSum, *services().codePage)
                           : timedOut(receiver.text());
  if (answer.errorText) sLastError = *answer.errorText;
  dwordPrinterStatus = answer.printerStatus;
  dwordStatusFiscal = answer.fiscalStatus;
  nEnvironmentError = answer.outcome;
  trace_.dump(answer.traced);
  return std::move(answer.fields);
}

Variant CZentaro::exchange(Command command, Fields fields) {
  for (Variant& field : fields) replaceControlCharacters(field);
  SendOMB(BuildOMB(static_cast<std::int16_t>(command), Array(std::move(fields))));
  return ReadResponse(nSequence.current());
}

std::int16_t CZentaro::run(Command command, Fields fields) {
  vaResponse = exchange(command, std::move(fields));
  return outcome();
}

std::int16_t CZentaro::runFrame(const Variant& frame) {
  SendOMB(frame);
  vaResponse = ReadResponse(nSequence.current());
  return outcome();
}

std::int16_t CZentaro::runCommand(Command command) { return ExecuteCMD(static_cast<std::int16_t>(command)); }

std::int16_t CZentaro::execute(const std::u16string& s) { return runFrame(s); }

std::int16_t CZentaro::ExecuteCMD(const Variant& nCmd) {
  if (!isPortOpen) return ENVERR_DEVICE;
  return runFrame(BuildOMB(toInt16(nCmd), Array(std::vector<Variant>())));
}

std::int16_t CZentaro::ExecuteOMB(const Variant& sOMB) {
  if (!isPortOpen) return ENVERR_DEVICE;
  return runFrame(sOMB);
}

}  // namespace zentaro
