// What the printer knows: document, day, and the machine itself.

import { byId, element } from "./dom.js";
import { say } from "./say.js";

const phases = {
  items: say("recibe renglones", "takes items"),
  paying: say("recibe pagos", "takes payments"),
  partial: say("cierre parcial", "partially closed"),
};

const fact = (name, value, attributes) =>
  [element("dt", {}, name), element("dd", attributes ?? {}, value)];

const amount = (text) => `Bs ${text}`;

function documentCard(open) {
  if (open.phase === "none") return [element("p", { class: "quiet" }, say("Ninguno abierto.", "None is open."))];
  const rest = open.phase === "items" && open.paid === "0,00"
    ? [] : fact(say("Pagado", "Paid"), amount(open.paid));
  const last = open.change !== "0,00"
    ? fact(say("Vuelto", "Change"), amount(open.change), { class: "good" })
    : fact(say("Por pagar", "To pay"), amount(open.unpaid), { class: "strong" });
  return [
    element("p", { class: "document-name" }, open.title, element("span", { class: "chip" }, phases[open.phase])),
    open.name || open.rif ? element("p", { class: "buyer" }, [open.name, open.rif].filter(Boolean).join(" · ")) : null,
    element("dl", { class: "facts" },
      ...fact(say("Renglones", "Items"), String(open.items)),
      ...fact(say("Neto", "Net"), amount(open.net)),
      ...fact("IVA", amount(open.tax)),
      ...fact("Total", amount(open.total), { class: "strong" }),
      ...rest, ...last),
  ].filter(Boolean);
}

const row = (cell, name, ...values) =>
  element("tr", {}, element("th", { scope: "row" }, name), ...values.map((value) => element(cell, {}, value)));

function figureRows(sales, returns) {
  return sales.lines.flatMap((line, at) => {
    if (at === 0) return [row("td", say("Exento", "Exempt"), line.base, returns.lines[0].base)];
    return [row("td", `BI ${line.label}`, line.base, returns.lines[at].base),
            row("td", `IVA ${line.label}`, line.tax, returns.lines[at].tax)];
  });
}

function dayCard(day) {
  const counts = [
    [day.invoices, say("facturas", "invoices"), say("factura", "invoice")],
    [day.creditNotes, say("notas de crédito", "credit notes"), say("nota de crédito", "credit note")],
    [day.nonFiscals, say("no fiscales", "non-fiscal"), say("no fiscal", "non-fiscal")],
    [day.cancelled, say("anulados", "cancelled"), say("anulado", "cancelled")],
  ].map(([count, many, one]) => element("li", {}, element("b", {}, String(count)), ` ${count === 1 ? one : many}`));
  const head = element("tr", {}, element("td", {}), element("th", { scope: "col" }, say("Ventas", "Sales")),
    element("th", { scope: "col" }, say("Devoluciones", "Returns")));
  return [
    element("ul", { class: "counts" }, ...counts),
    element("table", { class: "figures" }, element("thead", {}, head),
      element("tbody", {}, ...figureRows(day.sales, day.returns)),
      element("tbody", { class: "total" }, row("td", "Total", day.sales.total, day.returns.total)),
      element("tbody", {}, row("td", "IGTF", day.sales.igtf, day.returns.igtf),
        row("td", say("Descuentos", "Discounts"), day.discounts, ""))),
  ];
}

function texts(name, lines) {
  const set = lines.filter(Boolean);
  return set.length === 0 ? [] : fact(name, set.join(" / "));
}

function machineCard(state, about, drawers) {
  const memory = state.memory;
  const closed = memory.closedAt ? ` (${memory.closedAt})` : "";
  return [
    ...fact(say("Serial", "Serial number"), about.serial),
    ...fact(say("Dueño", "Owner"), about.owner),
    ...fact("RIF", about.rif),
    ...fact(say("Últimos números", "Last numbers"),
      say(`F ${memory.invoice}, NC ${memory.creditNote}, NF ${memory.nonFiscal}`,
        `I ${memory.invoice}, CN ${memory.creditNote}, NF ${memory.nonFiscal}`)),
    ...fact(say("Memoria fiscal", "Fiscal memory"),
      memory.z === 0 ? say("sin cierres Z", "no Z closing") : `Z ${memory.z}${closed}`),
    ...fact(say("Gavetas abiertas a las", "Drawers opened at"), drawers),
    ...fact(say("Estación de cheques", "Slip station"), state.slip ? say("activa", "on") : say("inactiva", "off")),
    ...texts(say("Encabezado", "Header"), state.header),
    ...texts(say("Pie", "Footer"), state.footer),
    ...fact("IGTF", about.igtf),
  ];
}

export function showState(state, about, drawers) {
  byId("document").replaceChildren(...documentCard(state.document));
  byId("day").replaceChildren(...dayCard(state.day));
  byId("state").replaceChildren(...machineCard(state, about, drawers));
}
