// The printer as a device: status letter, reset, serial number, clock, drawers, paper and slip station.
#include <algorithm>

#include "automation/conversions.h"
#include "automation/masks.h"
#include "documents/encoding.h"
#include "platform/services.h"
#include "printer/czentaro.h"
#include "util/general.h"

namespace zentaro {

namespace {

std::u16string upperCase(std::u16string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](char16_t character) {
    return character >= u'a' && character <= u'z' ? static_cast<char16_t>(character - u'a' + u'A')
                                                  : character;
  });
  return text;
}

}  // namespace

std::int16_t CZentaro::GetDeviceStatus(const Variant& istrComando) {
  if (!isPortOpen) return ENVERR_DEVICE;
  const std::u16string letter = upperCase(toText(istrComando));
  // A search for a part of the text, which an empty one passes.
  if (letter.size() > 1 || std::u16string_view(u"NEABCDRFJ").find(letter) == std::u16string_view::npos) {
    nEnvironmentError = ENVERR_BADARG;
    return ENVERR_BADARG;
  }
  return run(Command::Status, {letter});
}

void CZentaro::Reset() {
  std::u16string bytes;
  for (char16_t byte = 0x07; byte <= 0x11; ++byte) bytes += byte;
  SendOMB(bytes);
  services().clock->sleep(std::chrono::milliseconds(5000));
}

std::u16string CZentaro::SerialImpresora() {
  if (runCommand(Command::SerialNumber) != ENVERR_OK) return {};
  return toText(response(3));
}

Date CZentaro::GetDateTime() {
  if (runCommand(Command::ReadClock) != ENVERR_OK) return {};
  return General::MakeDateTimeWithSeconds(toText(response(3)), toText(response(4)));
}

std::int16_t CZentaro::SetDateTime(const Variant& idtFechaActual) {
  if (!isPortOpen) return ENVERR_DEVICE;
  // A number is no date here, nor is a text that is a number.
  const bool isText = idtFechaActual.is(Variant::Kind::Text);
  const std::optional<Date> date = isText ? textToDate(idtFechaActual.text()) : asDate(idtFechaActual);
  if (!date || asNumber(idtFechaActual)) {
    nEnvironmentError = ENVERR_BADARG;
    return ENVERR_BADARG;
  }
  return run(Command::SetClock, {maskDate(*date), maskTime(*date)});
}

std::int16_t CZentaro::AbrirGavetaN(const Variant& nGaveta) {
  const std::optional<double> drawer = asNumber(nGaveta);
  // required: only returned, and before any look at the port.
  if (!drawer || !(*drawer >= 1 && *drawer <= 2)) return ENVERR_BADARG;
  return ExecuteCMD(static_cast<std::int16_t>(Command::OpenDrawer1) - 1 + *drawer);
}

std::int16_t CZentaro::CortarPapel() { return runCommand(Command::CutPaper); }
std::int16_t CZentaro::PaperFeed() { return runCommand(Command::FeedPaper); }
std::int16_t CZentaro::ActivarSlip() { return runCommand(Command::SlipOn); }
std::int16_t CZentaro::DesactivarSlip() { return runCommand(Command::SlipOff); }

}  // namespace zentaro
