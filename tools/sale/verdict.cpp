// The verdicts, one row each.
#include "tools/sale/verdict.h"

#include <algorithm>
#include <array>

#include "base/files/json.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "tools/connection/connection.h"

namespace zentaro::tools {

using terminal::harmless;
using terminal::say;

namespace {

struct Both {
  std::string_view spanish, english;
};

struct VerdictRow {
  Verdict verdict;
  int exitStatus;
  std::string_view name;     // for programs
  Both state, next;          // what happened, and what the cashier does
  std::string_view command;  // that ends the document which is open
};

// "{}" in the text is the command that ends an open document.
constexpr std::array<VerdictRow, 8> rows{{
    {Verdict::Printed,
     0,
     "printed",
     {"IMPRESO. El documento está cerrado y contado.", "PRINTED. The document is closed and counted."},
     {"No lo imprima otra vez.", "Do not print it again."},
     ""},
    {Verdict::PrintedInPart,
     0,
     "printed-in-part",
     {"IMPRESO, pero pueden faltar líneas al pie. El documento está cerrado y contado.",
      "PRINTED, but extra lines may be missing. The document is closed and counted."},
     {"No lo imprima otra vez; mire el papel y anote a mano lo que falte.",
      "Do not print it again; look at the paper and write down by hand what is missing."},
     ""},
    {Verdict::NotPrinted,
     3,
     "not-printed",
     {"NO IMPRESO. El documento no fue contado; lo que hay en el papel no vale.",
      "NOT PRINTED. The document was not counted; what is on the paper is void."},
     {"Corrija la causa e imprima la venta otra vez.", "Remove the cause, then print the sale again."},
     ""},
    {Verdict::Unknown,
     4,
     "unknown",
     {"NO SE SABE. La impresora no puede decir si el documento fue contado.",
      "UNKNOWN. The printer cannot say whether the document was counted."},
     {"No lo imprima todavía. Mire el papel: si termina como un documento completo, la venta está hecha; si "
      "termina como anulado, imprímala otra vez; si termina por la mitad, el documento sigue abierto y hay que "
      "anularlo primero:\n    {}",
      "Do not print it again yet. Look at the paper: if it ends like a complete document, the sale is done; if "
      "it ends as cancelled, print the sale again; if it ends in the middle, the document is still open and "
      "must be cancelled first:\n    {}"},
     "CancelarComprobante"},
    {Verdict::StillOpen,
     4,
     "still-open",
     {"SIGUE ABIERTO. El documento no está contado, pero la impresora no lo anula.",
      "STILL OPEN. The document is not counted, but the printer does not cancel it."},
     {"Ponga la impresora en orden (papel, tapa), anule el documento y luego imprima la venta otra vez:\n    {}",
      "Put the printer in order (paper, cover), cancel the document, then print the sale again:\n    {}"},
     "CancelarComprobante"},
    {Verdict::StillToBeClosed,
     4,
     "still-to-be-closed",
     {"SIGUE ABIERTO. El documento está pagado y parcialmente cerrado, pero la impresora no lo cierra.",
      "STILL OPEN. The document is paid and partially closed, but the printer does not close it."},
     {"No lo imprima otra vez. Ponga la impresora en orden (papel, tapa) y cierre el documento; la venta está "
      "hecha entonces:\n    {}",
      "Do not print it again. Put the printer in order (paper, cover), then close the document; the sale is "
      "then done:\n    {}"},
     "CerrarComprobante E"},
    {Verdict::OpenBefore,
     5,
     "open-before",
     {"NO IMPRESO. La impresora tiene un documento abierto, de otro programa o de una falla. No se envió nada.",
      "NOT PRINTED. A document is open on the printer, left by another program or by a failure. Nothing was "
      "sent."},
     {"Mire el papel, termine ese documento y luego imprima la venta otra vez:\n    {}",
      "Look at the paper, end that document, then print the sale again:\n    {}"},
     "CancelarComprobante"},
    {Verdict::Unreachable,
     3,
     "unreachable",
     {"NO IMPRESO. La impresora no responde como debe; no se envió nada.",
      "NOT PRINTED. The printer does not answer as it should; nothing was sent."},
     {"Revise corriente, cable, papel y puerto e imprima la venta otra vez.",
      "Look at power, cable, paper and port, then print the sale again."},
     ""},
}};

const VerdictRow& rowOf(Verdict verdict) { return *std::ranges::find(rows, verdict, &VerdictRow::verdict); }

bool isPrinted(const SaleEnd& end) {
  return end.verdict == Verdict::Printed || end.verdict == Verdict::PrintedInPart;
}

std::string stateText(const SaleEnd& end) {
  if (end.verdict == Verdict::NotPrinted && !end.wasOpened)
    return std::string(
        say("NO IMPRESO. No se abrió ningún documento.", "NOT PRINTED. No document was opened."));
  const Both& state = rowOf(end.verdict).state;
  return std::string(say(state.spanish, state.english));
}

// A virtual printer ends with the command that started it, so there is nothing to be sent to it.
std::string nextText(const SaleEnd& end, const SalePlace& place) {
  const VerdictRow& row = rowOf(end.verdict);
  const std::string command = place.isVirtual
                                  ? std::string(row.command)
                                  : "zentaro call " + place.portWords + " " + std::string(row.command);
  return say(row.next.spanish, row.next.english, {command});
}

Cents totalOf(const SaleEnd& end, const Totals& totals) {
  return end.receipt ? end.receipt->total : totals.due();
}
Cents changeOf(const SaleEnd& end, const Totals& totals) {
  return end.receipt ? end.receipt->change : totals.change();
}

std::string amountsText(const SaleEnd& end, const Totals& totals) {
  const std::string number = end.number
                                 ? numberText(*end.number)
                                 : std::string(say("desconocido (mire el papel)", "unknown (see the paper)"));
  std::string text = say("Número {}, total {}, vuelto {}", "Number {}, total {}, change {}",
                         {number, centsText(totalOf(end, totals)), centsText(changeOf(end, totals))});
  if (!end.receipt) return text + std::string(say(" (montos calculados)", " (amounts computed)"));
  const bool differs = end.receipt->total != totals.due() || end.receipt->change != totals.change();
  if (!differs) return text;
  return text + say(". La impresora difiere de lo calculado: total {}, vuelto {}",
                    ". The printer differs from what was computed: total {}, change {}",
                    {centsText(totals.due()), centsText(totals.change())});
}

}  // namespace

int exitStatus(Verdict verdict) { return rowOf(verdict).exitStatus; }

std::string numberText(const std::optional<int>& number) {
  if (!number) return std::string(say("desconocido (mire el papel)", "unknown (see the paper)"));
  const std::string digits = std::to_string(*number);
  return std::string(8 - std::min<std::size_t>(8, digits.size()), '0') + digits;
}

std::string verdictText(const SaleEnd& end, const Totals& totals, const SalePlace& place) {
  std::string text = stateText(end);
  if (isPrinted(end)) text += "\n" + amountsText(end, totals);
  if (place.isVirtual) text += "\n" + virtualNotice();
  text += "\n" + nextText(end, place);
  if (!isPrinted(end) && !end.reason.empty())
    text += "\n" + say("Causa: {}", "Cause: {}", {harmless(end.reason)});
  return text;
}

Json verdictJson(const SaleEnd& end, const Totals& totals, const SalePlace& place) {
  Json json{{"verdict", rowOf(end.verdict).name}};
  const auto amount = [&](Cents cents) { return isPrinted(end) ? Json(centsText(cents)) : Json(nullptr); };
  json["number"] = end.number ? Json(*end.number) : Json(nullptr);
  json["total"] = amount(totalOf(end, totals));
  json["igtf"] = amount(end.receipt ? end.receipt->total - totals.total() : totals.igtf);
  json["change"] = amount(changeOf(end, totals));
  json["cause"] = end.reason.empty() ? Json(nullptr) : Json(end.reason);
  json["next"] = nextText(end, place);
  json["virtual"] = place.isVirtual;
  return json;
}

}  // namespace zentaro::tools
