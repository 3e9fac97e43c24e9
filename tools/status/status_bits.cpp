// The bits as a table.
#include "tools/status/status_bits.h"

#include <array>

#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "virtual-printer/device/status.h"

namespace zentaro::tools {

using terminal::say;

namespace {

using namespace virtual_printer;

enum class Word { Printer, Fiscal };

struct Meaning {
  Word word;
  std::uint16_t bit;
  const char* code;  // null for what needs nobody, or is told by the document
  std::string_view spanish = {}, english = {}, spanishAdvice = {}, englishAdvice = {};
};

constexpr auto meanings = std::to_array<Meaning>({
    {Word::Printer, printer_bit::coverOpen, "cover-open", "la tapa está abierta", "the cover is open",
     "ciérrela; lo que estaba abierto sigue abierto", "close it; what was open is open still"},
    {Word::Printer, printer_bit::paperOut, "paper-out", "se acabó el papel", "the paper is out",
     "ponga un rollo; lo que estaba abierto sigue abierto", "put a roll in; what was open is open still"},
    {Word::Printer, printer_bit::paperNearEnd, "paper-near-end", "se está acabando el papel",
     "the paper is near its end", "tenga un rollo a mano, y cámbielo entre dos ventas",
     "have a roll at hand, and change it between two sales"},
    {Word::Fiscal, fiscal_bit::closingRequired, "closing-required",
     "hay que cerrar el día: no vende más sin el cierre Z",
     "the day has to be closed: it sells no more without a Z", "{}", "{}"},
    {Word::Fiscal, fiscal_bit::memoryFull, "memory-full", "la memoria fiscal está llena: no vende más",
     "the fiscal memory is full: it sells no more",
     "llame al servicio técnico autorizado; los reportes de memoria se pueden sacar todavía",
     "call the authorized service; memory reports can still be printed"},
    {Word::Fiscal, fiscal_bit::memoryNearFull, "memory-near-full", "la memoria fiscal está casi llena",
     "the fiscal memory is nearly full", "llame al servicio técnico autorizado antes de que se llene",
     "call the authorized service before it is full"},
    {Word::Printer, printer_bit::slipOn, nullptr},
    {Word::Fiscal, fiscal_bit::invoiceOpen, nullptr},
    {Word::Fiscal, fiscal_bit::creditNoteOpen, nullptr},
    {Word::Fiscal, fiscal_bit::nonFiscalOpen, nullptr},
    {Word::Fiscal, fiscal_bit::partiallyClosed, nullptr},
    {Word::Fiscal, fiscal_bit::paying, nullptr},
    {Word::Fiscal, fiscal_bit::dayOpen, nullptr},
});
constexpr std::int32_t error = 0x8000;  // the one bit that all models share

std::int32_t of(const StatusWords& words, Word word) {
  return word == Word::Printer ? words.printer : words.fiscal;
}

}  // namespace

std::vector<Condition> conditionsIn(const StatusWords& words, Bits bits, const std::string& portWords) {
  std::vector<Condition> conditions;
  for (const Meaning& meaning : meanings) {
    const bool isSet = bits == Bits::Known && (of(words, meaning.word) & meaning.bit) != 0;
    if (!isSet || meaning.code == nullptr) continue;
    conditions.push_back({meaning.code, say(meaning.spanish, meaning.english),
                          say(meaning.spanishAdvice, meaning.englishAdvice,
                              {terminal::whole("zentaro cierre z " + portWords)})});
  }
  return conditions;
}

StatusWords unreadable(const StatusWords& words, Bits bits) {
  StatusWords readable{error, error};
  if (bits == Bits::Known)
    for (const Meaning& meaning : meanings)
      (meaning.word == Word::Printer ? readable.printer : readable.fiscal) |= meaning.bit;
  return {words.printer & ~readable.printer, words.fiscal & ~readable.fiscal};
}

}  // namespace zentaro::tools
