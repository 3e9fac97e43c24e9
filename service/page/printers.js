// A card for each printer: what it says of itself, what it prints, what waits, its day, and the closings.

import { attempt, sure, tell } from "./ask.js";
import { byId, button, element } from "./dom.js";
import { say } from "./say.js";
import { ask } from "./service.js";
import { amountText, kindWord, lampColor, numberText, stateColor, stateWord } from "./words.js";

const days = new Map(); // the figures that were asked for, by printer
const closings = new Map(); // the ids of those that were asked for, by kind and printer

const newId = (kind) => `${kind}-${new Date().toISOString().slice(0, 19).replace(/[^0-9]/g, "")}-${crypto.getRandomValues(new Uint16Array(1))[0]}`;

function progress(running) {
  const step = running.steps > 0 ? `${running.step}/${running.steps} ${running.label}` : running.label;
  return element("div", { class: "progress" },
    element("p", null, element("span", { class: "strong" }, running.id), element("span", null, step)),
    element("progress", { max: running.steps || 1, value: running.step, "aria-label": running.id }));
}

// The list moves up by itself, under somebody's finger too.
async function takeBack(job, pressed) {
  const yes = await sure(say(`¿Quitar ${job.id}?`, `Withdraw ${job.id}?`), say("No se imprimirá.", "It will not be printed."), say("Quitar", "Withdraw"));
  if (yes) await attempt(pressed, () => ask("DELETE", `v1/jobs/${job.id}`));
}

function waiting(jobs, may) {
  return element("ul", { class: "queue" }, ...jobs.map((job) => {
    const withdraw = button(say("Quitar", "Withdraw"), { "aria-label": `${say("Quitar", "Withdraw")} ${job.id}`, "data-act": job.id },
      () => takeBack(job, withdraw));
    const isClosing = job.kind === "X" || job.kind === "Z";
    return element("li", null, element("span", null, job.id),
      element("span", null, job.cause ?? kindWord(job.kind)), may(isClosing ? "close" : "sell") ? withdraw : null);
  }));
}

function figures(day) {
  const rows = [[say("Ventas exentas", "Exempt sales"), day.sales.exempt], [say("Base", "Base"), day.sales.base1],
    [say("Impuesto", "Tax"), day.sales.tax1], [say("Base 2", "Base 2"), day.sales.base2], [say("Impuesto 2", "Tax 2"), day.sales.tax2],
    [say("Base 3", "Base 3"), day.sales.base3], [say("Impuesto 3", "Tax 3"), day.sales.tax3],
    [say("Descuentos", "Discounts"), day.discounts],
    [say("Notas de crédito, base", "Credit notes, base"), day.creditNotes.base1]];
  const shown = rows.filter(([, amount], index) => index < 3 || Number(amount) !== 0);
  return element("dl", { class: "facts day" },
    ...shown.flatMap(([name, amount]) => [element("dt", null, name), element("dd", null, amountText(amount))]));
}

// One whose answer was lost may be in the books: unless it is seen there, the same is asked for again and not a second one.
function idOfClosing(place, kind, jobs) {
  if (!closings.has(place) || jobs.some((job) => job.id === closings.get(place))) closings.set(place, newId(kind));
  return closings.get(place);
}

async function close(printer, kind, jobs, pressed) {
  const isZ = kind === "Z";
  const yes = await sure(isZ ? say(`¿Cerrar el día de ${printer}?`, `Close the day of ${printer}?`)
    : say(`¿Imprimir el X de ${printer}?`, `Print the X of ${printer}?`),
  isZ ? say("El Z termina el día fiscal y no se puede deshacer.", "The Z ends the fiscal day and cannot be undone.")
    : say("El X muestra los montos del día y no cambia nada.", "The X shows the day's figures and changes nothing."),
  isZ ? say("Cerrar el día", "Close the day") : say("Imprimir el X", "Print the X"));
  if (!yes) return;
  const id = idOfClosing(`${kind} ${printer}`, kind, jobs);
  const job = await attempt(pressed, () => ask("PUT", `v1/jobs/${id}?wait=20`, { printer, closing: kind }));
  if (job) tell(`${kindWord(kind)}: ${stateWord(job.state)} ${numberText(job.number)}`);
}

function actions(printer, jobs, may, redraw) {
  const day = button(days.has(printer.name) ? say("Ocultar el día", "Hide the day") : say("El día", "The day"), { "data-act": "day" }, async () => {
    if (days.delete(printer.name)) return redraw();
    const answer = await attempt(day, () => ask("GET", `v1/printers/${printer.name}/day`));
    if (answer) days.set(printer.name, answer);
    return redraw();
  });
  const closing = (kind, attributes) => {
    const made = button(kind === "X" ? say("Cierre X", "X closing") : say("Cierre Z", "Z closing"), { "data-act": kind, ...attributes },
      () => close(printer.name, kind, jobs, made));
    return made;
  };
  const isClosing = jobs.some((job) => job.kind === "Z" && job.printer === printer.name && ["queued", "printing"].includes(job.state));
  return element("div", { class: "buttons" }, day, may("close") ? closing("X") : null,
    may("close") ? closing("Z", { class: "danger", disabled: isClosing }) : null);
}

// The figures of a day that is over are not left standing.
export const forgetDay = (printer) => days.delete(printer);

export function showPrinters(printers, jobs, may, redraw) {
  byId("printers").replaceChildren(...printers.map((printer) => {
    const queued = jobs.filter((job) => job.state === "queued" && job.printer === printer.name);
    const facts = [printer.machine, printer.lastZ === null ? null : `Z ${printer.lastZ}`,
      printer.lastInvoice === null ? null : `${say("última factura", "last invoice")} ${numberText(printer.lastInvoice)}`];
    return element("article", { class: "card printer", "data-printer": printer.name },
      element("h3", null, element("span", { class: "lamp", "data-color": lampColor(printer.state) }), printer.name,
        element("span", { class: `chip ${stateColor(printer.state)}` }, stateWord(printer.state))),
      printer.virtual ? element("p", { class: "quiet" }, say("Impresora virtual: nada de esto es fiscal.", "Virtual printer: none of this is fiscal.")) : null,
      printer.cause ? element("p", { class: "cause" }, printer.cause) : null,
      printer.running ? progress(printer.running) : null,
      queued.length > 0 ? waiting(queued, may) : null,
      element("p", { class: "quiet" }, facts.filter(Boolean).join(" · ")),
      printer.booksMiss > 0 ? element("p", { class: "bad" }, say(`A los libros les faltan ${printer.booksMiss} documentos de esta impresora.`, `The books miss ${printer.booksMiss} documents of this printer.`)) : null,
      days.has(printer.name) ? figures(days.get(printer.name)) : null,
      actions(printer, jobs, may, redraw));
  }));
}
