// The verdicts, one row each.
#include "till/words/verdict_words.h"

#include <algorithm>
#include <array>

#include "base/files/json.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "till/words/moments.h"

namespace zentaro::till {

using terminal::harmless;
using terminal::say;

namespace {

struct Both {
  std::string_view spanish, english;
};

struct Words {
  Ending ending;
  Both state, next;          // what happened, and what the cashier does
  std::string_view command;  // that ends the document which is open
};

// "{}" in the text is the command that ends an open document.
constexpr std::array<Words, 8> wordings{{
    {Ending::Printed,
     {"IMPRESO. El documento está cerrado y contado.", "PRINTED. The document is closed and counted."},
     {"No lo imprima otra vez.", "Do not print it again."},
     ""},
    {Ending::PrintedInPart,
     {"IMPRESO, pero pueden faltar líneas al pie. El documento está cerrado y contado.",
      "PRINTED, but extra lines may be missing. The document is closed and counted."},
     {"No lo imprima otra vez; mire el papel y anote a mano lo que falte.",
      "Do not print it again; look at the paper and write down by hand what is missing."},
     ""},
    {Ending::NotPrinted,
     {"NO IMPRESO. El documento no fue contado; lo que hay en el papel no vale.",
      "NOT PRINTED. The document was not counted; what is on the paper is void."},
     {"Corrija la causa e imprima la venta otra vez.", "Remove the cause, then print the sale again."},
     ""},
    {Ending::Unknown,
     {"NO SE SABE. La impresora no puede decir si el documento fue contado.",
      "UNKNOWN. The printer cannot say whether the document was counted."},
     {"No lo imprima todavía. Mire el papel: si termina como un documento completo, la venta está hecha; si "
      "termina como anulado, imprímala otra vez; si termina por la mitad, el documento sigue abierto y hay que "
      "anularlo primero:\n    {}",
      "Do not print it again yet. Look at the paper: if it ends like a complete document, the sale is done; if "
      "it ends as cancelled, print the sale again; if it ends in the middle, the document is still open and "
      "must be cancelled first:\n    {}"},
     "CancelarComprobante"},
    {Ending::StillOpen,
     {"SIGUE ABIERTO. El documento no está contado, pero la impresora no lo anula.",
      "STILL OPEN. The document is not counted, but the printer does not cancel it."},
     {"Ponga la impresora en orden (papel, tapa), anule el documento y luego imprima la venta otra vez:\n    {}",
      "Put the printer in order (paper, cover), cancel the document, then print the sale again:\n    {}"},
     "CancelarComprobante"},
    {Ending::StillToBeClosed,
     {"SIGUE ABIERTO. El documento está pagado y parcialmente cerrado, pero la impresora no lo cierra.",
      "STILL OPEN. The document is paid and partially closed, but the printer does not close it."},
     {"No lo imprima otra vez. Ponga la impresora en orden (papel, tapa) y cierre el documento; la venta está "
      "hecha entonces:\n    {}",
      "Do not print it again. Put the printer in order (paper, cover), then close the document; the sale is "
      "then done:\n    {}"},
     "CerrarComprobante E"},
    {Ending::OpenBefore,
     {"NO IMPRESO. La impresora tiene un documento abierto, de otro programa o de una falla. No se envió nada.",
      "NOT PRINTED. A document is open on the printer, left by another program or by a failure. Nothing was "
      "sent."},
     {"Mire el papel, termine ese documento y luego imprima la venta otra vez:\n    {}",
      "Look at the paper, end that document, then print the sale again:\n    {}"},
     "CancelarComprobante"},
    {Ending::Unreachable,
     {"NO IMPRESO. La impresora no responde como debe; no se envió nada.",
      "NOT PRINTED. The printer does not answer as it should; nothing was sent."},
     {"Revise corriente, cable, papel y puerto e imprima la venta otra vez.",
      "Look at power, cable, paper and port, then print the sale again."},
     ""},
}};

// Those by the books are sentences about the job in the way: its id, its moment, its number, its printer.
struct BookRow {
  Ending ending;
  Both text;
};
constexpr std::array<BookRow, 4> bookRows{{
    {Ending::AlreadyPrinted,
     {"YA IMPRESO. La venta \"{0}\" de las {1} se imprimió como {2}; no se envió nada.",
      "ALREADY PRINTED. The sale \"{0}\" of {1} was printed as {2}; nothing was sent."}},
    {Ending::PrintedBefore,
     {"YA ESTABA IMPRESA como {2}, a las {1}. No se envió nada; --again solo si es otro cliente.",
      "ALREADY PRINTED as {2}, at {1}. Nothing was sent; --again only for another customer."}},
    {Ending::UnknownBefore,
     {"NO SE SABE qué fue de la venta de las {1} ({3}). Mire el papel y dígalo con --resolve printed o "
      "--resolve not-printed.",
      "UNKNOWN what became of the sale of {1} ({3}). Look at the paper and say so with --resolve printed "
      "or --resolve not-printed."}},
    {Ending::OtherContent,
     {"NO IMPRESO. El id \"{0}\" es de otra venta, de las {1}; no se envió nada.",
      "NOT PRINTED. The id \"{0}\" belongs to another sale, of {1}; nothing was sent."}},
}};

const Words* wordsOf(Ending ending) {
  const auto found = std::ranges::find(wordings, ending, &Words::ending);
  return found == wordings.end() ? nullptr : &*found;
}

std::string busyText(const Verdict& verdict) {
  if (!verdict.job)
    return say("NO IMPRESO. Otro programa usa esta impresora ahora; no se envió nada.",
               "NOT PRINTED. Another program uses this printer now; nothing was sent.");
  return say("EN CURSO. La venta \"{}\" espera o se imprime ahora en otra parte; aquí no se envió nada.",
             "UNDER WAY. The sale \"{}\" waits or is being printed elsewhere; nothing was sent here.",
             {harmless(verdict.job->id)});
}

// What the books say, with its gaps by number; empty for what a printer said.
std::string booksText(const Verdict& verdict) {
  if (verdict.ending == Ending::Busy) return busyText(verdict);
  const auto row = std::ranges::find(bookRows, verdict.ending, &BookRow::ending);
  if (row == bookRows.end() || !verdict.job) return {};
  const Job& job = *verdict.job;
  const std::array values{harmless(job.id), momentText(job.begun != 0 ? job.begun : job.accepted),
                          numberText(job.number), harmless(job.printer)};
  std::string text = say(row->text.spanish, row->text.english);
  for (std::size_t index = 0; index < values.size(); ++index) {
    const std::string gap = "{" + std::to_string(index) + "}";
    if (const auto at = text.find(gap); at != std::string::npos) text.replace(at, gap.size(), values[index]);
  }
  return text;
}

std::string stateText(const Verdict& verdict) {
  if (verdict.ending == Ending::NotPrinted && !verdict.wasOpened)
    return say("NO IMPRESO. No se abrió ningún documento.", "NOT PRINTED. No document was opened.");
  const Both& state = wordsOf(verdict.ending)->state;
  return say(state.spanish, state.english);
}

// What the printer wants before it sells again; each model says it in words of its own, with these in them.
bool wantsZ(const Verdict& verdict) {
  const bool isRefused = verdict.ending == Ending::NotPrinted && verdict.cause.kind == Cause::Kind::Refused;
  return isRefused && verdict.cause.printer.find("CIERRE Z") != std::string::npos;
}

// A virtual printer ends with the command that started it, so there is nothing to be sent to it.
std::string nextText(const Verdict& verdict, const SalePlace& place) {
  const Words& words = *wordsOf(verdict.ending);
  if (wantsZ(verdict))
    return say("Cierre el día, y luego imprima la venta otra vez:\n    zentaro cierre z {}",
               "Close the day, then print the sale again:\n    zentaro cierre z {}", {place.portWords});
  const std::string command = place.isVirtual
                                  ? std::string(words.command)
                                  : "zentaro call " + place.portWords + " " + std::string(words.command);
  std::string text = say(words.next.spanish, words.next.english, {command});
  if (verdict.ending == Ending::StillOpen && verdict.job && !verdict.job->id.empty())
    text += say("\nO basta la misma orden con --id {}: anula el documento e imprime la venta.",
                "\nOr the same command with --id {} will do: it cancels the document and prints the sale.",
                {harmless(verdict.job->id)});
  return text;
}

std::string amountsText(const Verdict& verdict) {
  const Totals& totals = verdict.totals;
  std::string text =
      say("Número {}, total {}, vuelto {}", "Number {}, total {}, change {}",
          {numberText(verdict.number), centsText(verdict.total()), centsText(verdict.change())});
  if (!verdict.receipt) return text + say(" (montos calculados)", " (amounts computed)");
  const bool differs = verdict.total() != totals.due() || verdict.change() != totals.change();
  if (!differs) return text;
  return text + say(". La impresora difiere de lo calculado: total {}, vuelto {}",
                    ". The printer differs from what was computed: total {}, change {}",
                    {centsText(totals.due()), centsText(totals.change())});
}

}  // namespace

std::string numberText(const std::optional<std::int64_t>& number) {
  if (!number) return say("desconocido (mire el papel)", "unknown (see the paper)");
  const std::string digits = std::to_string(*number);
  return std::string(8 - std::min<std::size_t>(8, digits.size()), '0') + digits;
}

std::string verdictText(const Verdict& verdict, const SalePlace& place) {
  std::string text = booksText(verdict);
  if (!text.empty()) return text;
  text = stateText(verdict);
  if (isPrinted(verdict.ending)) text += "\n" + amountsText(verdict);
  if (place.isVirtual) text += "\n" + virtualNotice();
  text += "\n" + nextText(verdict, place);
  if (!isPrinted(verdict.ending) && !verdict.cause.text.empty())
    text += "\n" + say("Causa: {}", "Cause: {}", {harmless(verdict.cause.text)});
  return text;
}

Json verdictJson(const Verdict& verdict, const SalePlace& place) {
  const std::string byBooks = booksText(verdict);
  const auto number = byBooks.empty() || !verdict.job ? verdict.number : verdict.job->number;
  const auto amount = [&](Cents cents) {
    return isPrinted(verdict.ending) ? Json(centsText(cents)) : Json(nullptr);
  };
  Json json{{"verdict", nameOf(verdict.ending)}};
  json["number"] = orNull(number);
  json["total"] = amount(verdict.total());
  json["igtf"] = amount(verdict.igtf());
  json["change"] = amount(verdict.change());
  json["cause"] = orNull(verdict.cause.text);
  json["next"] = byBooks.empty() ? nextText(verdict, place) : byBooks;
  json["virtual"] = place.isVirtual;
  return json;
}

std::string virtualNotice() {
  return say("EN LA IMPRESORA VIRTUAL: no es un documento fiscal",
             "ON THE VIRTUAL PRINTER: not a fiscal document");
}

}  // namespace zentaro::till
