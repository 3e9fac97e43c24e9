// The sentences, and the table of figures.
#include "till/words/closing_words.h"

#include <algorithm>
#include <vector>

#include "base/files/json.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "till/words/moments.h"

namespace zentaro::till {

using terminal::harmless;
using terminal::say;

namespace {

// Amounts have two decimals; should one have more, nothing is rounded away.
std::string amountText(std::int64_t scaled) {
  return scaled % 100 == 0 ? centsText(scaled / 100) : decimalText(scaled, 4);
}

struct Figure {
  std::string name;
  std::int64_t amount = 0;
  bool isAlwaysShown = false;
};

struct Group {
  std::string name;
  std::vector<Figure> rows;
  std::int64_t total() const {
    std::int64_t sum = 0;
    for (const Figure& row : rows) sum += row.amount;
    return sum;
  }
};

Group groupOf(std::string name, const Currency& exempt, const std::array<Currency, 3>& bases,
              const std::array<Currency, 3>& taxes) {
  Group group{std::move(name), {{"EXENTO (E)", exempt.scaled(), true}}};
  for (std::size_t rate = 0; rate < bases.size(); ++rate) {
    const std::string number = std::to_string(rate + 1);
    group.rows.push_back({"BI " + number, bases[rate].scaled()});
    group.rows.push_back({"IVA " + number, taxes[rate].scaled()});
  }
  return group;
}

Group salesOf(const ResultadoCierre& f) {
  return groupOf("VENTAS", f.VentasExentas, {f.BaseGravable1, f.BaseGravable2, f.BaseGravable3},
                 {f.Impuesto1, f.Impuesto2, f.Impuesto3});
}

Group returnsOf(const ResultadoCierre& f) {
  return groupOf("DEVOLUCIONES", f.MontoExentoNC, {f.ValorNCBase1, f.ValorNCBase2, f.ValorNCBase3},
                 {f.ImpuestoNCBase1, f.ImpuestoNCBase2, f.ImpuestoNCBase3});
}

std::int64_t taxOf(const ResultadoCierre& f) {
  return f.Impuesto1.scaled() + f.Impuesto2.scaled() + f.Impuesto3.scaled();
}

std::string figureLine(const std::string& name, const std::string& value) {
  constexpr std::size_t nameWidth = 24, valueWidth = 19;
  return "  " + terminal::padded(name, nameWidth) + terminal::paddedLeft(value, valueWidth) + "\n";
}

std::string letter(const ClosingVerdict& verdict) { return verdict.kind == Kind::Z ? "Z" : "X"; }

std::string title(const ClosingVerdict& verdict) {
  return verdict.number ? letter(verdict) + " " + numberText(verdict.number) : letter(verdict);
}

std::string printedText(const ClosingVerdict& verdict) {
  if (!verdict.figures)
    return say("{} IMPRESO; sus montos no llegaron, mire el papel.",
               "{} PRINTED; its figures did not arrive, see the paper.", {title(verdict)});
  const ResultadoCierre& figures = *verdict.figures;
  return say("{} IMPRESO, ventas {}, IVA {}, devoluciones {}.", "{} PRINTED, sales {}, tax {}, returns {}.",
             {title(verdict), amountText(salesOf(figures).total()), amountText(taxOf(figures)),
              amountText(returnsOf(figures).total())});
}

std::string closingState(const ClosingVerdict& verdict) {
  switch (verdict.ending) {
    case Ending::Printed:
    case Ending::PrintedInPart: return printedText(verdict);
    case Ending::AlreadyPrinted:
    case Ending::PrintedBefore:
      return say("{} YA IMPRESO como {}, a las {}; no se envió nada.",
                 "{} ALREADY PRINTED as {}, at {}; nothing was sent.",
                 {letter(verdict), numberText(verdict.job ? verdict.job->number : verdict.number),
                  momentText(verdict.job ? verdict.job->begun : 0)});
    case Ending::Busy:
      return say("{} NO IMPRESO. Otro programa usa esta impresora ahora; no se envió nada.",
                 "{} NOT PRINTED. Another program uses this printer now; nothing was sent.",
                 {letter(verdict)});
    case Ending::Unreachable:
      return say("{} NO IMPRESO. La impresora no responde como debe; no se envió nada.",
                 "{} NOT PRINTED. The printer does not answer as it should; nothing was sent.",
                 {letter(verdict)});
    case Ending::UnknownBefore:
      return say("{} NO IMPRESO. No se sabe qué fue de la venta de las {}; no se envió nada.",
                 "{} NOT PRINTED. It is not known what became of the sale of {}; nothing was sent.",
                 {letter(verdict), momentText(verdict.job ? verdict.job->begun : 0)});
    case Ending::OtherContent:
      return say("{} NO IMPRESO. El id es de otro documento; no se envió nada.",
                 "{} NOT PRINTED. The id belongs to another document; nothing was sent.", {letter(verdict)});
    case Ending::NotPrinted:
    case Ending::OpenBefore:
      return verdict.kind == Kind::X
                 ? say("X NO IMPRESO.", "X NOT PRINTED.")
                 : say("Z NO IMPRESO. El día sigue abierto.", "Z NOT PRINTED. The day is still open.");
    case Ending::Unknown:
    case Ending::StillOpen:
    case Ending::StillToBeClosed: break;
  }
  return verdict.kind == Kind::X ? say("X EN DUDA. Puede estar impreso; sus montos no llegaron.",
                                       "X UNKNOWN. It may be printed; its figures did not arrive.")
                                 : say("Z EN DUDA. No se sabe si el día ya está cerrado.",
                                       "Z UNKNOWN. The day may be closed already.");
}

std::string closingNext(const ClosingVerdict& verdict, const SalePlace& place) {
  switch (verdict.ending) {
    case Ending::PrintedBefore:
      return say("Si después hubo ventas, dé la orden otra vez para cerrar el día de hoy.",
                 "If there were sales since, give the command again to close this day.");
    case Ending::Printed:
    case Ending::AlreadyPrinted:
      return verdict.kind == Kind::X
                 ? std::string()
                 : say("El día está cerrado: no cierre otra vez.", "The day is closed: do not close again.");
    case Ending::UnknownBefore:
      return say("Mire el papel y dígalo con \"zentaro sale ARCHIVO --resolve\"; el Z borra la prueba.",
                 "Look at the paper and say so with \"zentaro sale FILE --resolve\"; a Z takes the "
                 "evidence away.");
    case Ending::Unknown:
      if (verdict.kind == Kind::X)
        return say("Pedirlo otra vez no cambia nada.", "Asking again changes nothing.");
      return say("Mire el papel, y UltimoCierreZ de \"zentaro status\", antes de cerrar otra vez.",
                 "Look at the paper, and at UltimoCierreZ of \"zentaro status\", before you close "
                 "again.");
    case Ending::Unreachable:
      return say("Revise corriente, cable, papel y puerto, y ciérrelo otra vez.",
                 "Look at power, cable, paper and port, then close again.");
    case Ending::Busy:
      return say("Espere a que termine, o dé la orden con --wait.",
                 "Wait until it is done, or give the command with --wait.");
    default: break;
  }
  if (verdict.openDocument == 0)
    return say("Corrija la causa y dé la orden otra vez.",
               "Remove the cause, then give the command "
               "again.");
  return say(
      "Hay un documento abierto. Mire el papel, termínelo y dé la orden otra vez:\n    zentaro call {} {}",
      "A document is open. Look at the paper, end it, then give the command again:\n    zentaro call {} {}",
      {place.portWords, endingCommand(verdict.openDocument)});
}

}  // namespace

std::string endingCommand(int document) {
  constexpr int nonFiscal = 3, partial = 4;
  return document == nonFiscal ? "CerrarDNF"
         : document == partial ? "CerrarComprobante E"
                               : "CancelarComprobante";
}

std::string closingText(const ClosingVerdict& verdict, const SalePlace& place) {
  std::string text = closingState(verdict);
  if (place.isVirtual) text += "\n" + virtualNotice();
  if (const std::string next = closingNext(verdict, place); !next.empty()) text += "\n" + next;
  if (!isPrinted(verdict.ending) && !verdict.cause.text.empty())
    text += "\n" + say("Causa: {}", "Cause: {}", {harmless(verdict.cause.text)});
  return text;
}

std::string figuresText(const ClosingVerdict& verdict) {
  if (!verdict.figures) return {};
  std::string text;
  for (const Group& group : {salesOf(*verdict.figures), returnsOf(*verdict.figures)}) {
    text += group.name + "\n";
    for (const Figure& row : group.rows)
      if (row.isAlwaysShown || row.amount != 0) text += figureLine(row.name, amountText(row.amount));
    text += figureLine("TOTAL " + group.name, amountText(group.total()));
  }
  text += figureLine("DESCUENTOS", amountText(verdict.figures->ValorDescuentos.scaled()));
  text += figureLine("IVA DE DESCUENTOS", amountText(verdict.figures->ImpuestoDescuentos.scaled()));
  return text + figureLine("ULTIMA FACTURA", numberText(verdict.figures->numeroUltimaFactura));
}

Json closingJson(const ClosingVerdict& verdict, const SalePlace& place) {
  const auto number = verdict.number || !verdict.job ? verdict.number : verdict.job->number;
  Json json{{"closing", letter(verdict)}, {"verdict", nameOf(verdict.ending)}};
  json["number"] = orNull(number);
  json["cause"] = orNull(verdict.cause.text);
  json["next"] = orNull(closingNext(verdict, place));
  json["virtual"] = place.isVirtual;
  return json;
}

}  // namespace zentaro::till
