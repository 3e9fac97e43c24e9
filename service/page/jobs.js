// The jobs of the day as a table, and those that somebody has to look at.

import { attempt, sure } from "./ask.js";
import { byId, button, element } from "./dom.js";
import { say } from "./say.js";
import { ask } from "./service.js";
import { amountText, kindWord, numberText, stateColor, stateWord, timeText } from "./words.js";

function row(job) {
  return element("tr", { "data-job": job.id },
    element("td", null, timeText(job.accepted)),
    element("td", null, job.id, job.cause && job.state !== "queued" ? element("small", null, job.cause) : null),
    element("td", { class: "wide" }, job.printer),
    element("td", { class: "wide" }, kindWord(job.kind)),
    element("td", null, element("span", { class: `chip ${stateColor(job.state)}` }, stateWord(job.state))),
    element("td", { class: "amount" }, numberText(job.number)),
    element("td", { class: "amount" }, amountText(job.total)));
}

export function showJobs(jobs, isSearch) {
  const names = [say("Hora", "Time"), "Id", say("Impresora", "Printer"), say("Documento", "Document"), say("Estado", "State"),
    say("Número", "Number"), "Total"];
  const classes = [null, null, "wide", "wide", null, "amount", "amount"];
  byId("jobs").replaceChildren(
    element("thead", null, element("tr", null,
      ...names.map((name, index) => element("th", { scope: "col", class: classes[index] ?? false }, name)))),
    element("tbody", null, ...jobs.map(row)));
  byId("jobs").hidden = jobs.length === 0;
  byId("no-jobs").hidden = jobs.length > 0;
  byId("no-jobs").textContent = isSearch ? say("Nada coincide.", "Nothing matches.")
    : say("Todavía no hay ninguno.", "There are none yet.");
}

async function find(job, printed, pressed) {
  const yes = await sure(printed ? say(`¿${job.id} se imprimió?`, `Was ${job.id} printed?`) : say(`¿${job.id} no se imprimió?`, `Was ${job.id} not printed?`),
    printed ? say("El papel termina como un documento completo, con su total y su número.", "The paper ends like a complete document, with its total and its number.")
      : say("No hay papel, o termina como anulado.", "There is no paper, or it ends as cancelled."),
    printed ? say("Se imprimió", "It was printed") : say("No se imprimió", "It was not printed"));
  if (yes) await attempt(pressed, () => ask("PUT", `v1/jobs/${job.id}/finding`, { printed }));
}

function unknown(job, may) {
  const choice = (printed) => {
    const made = button(printed ? say("Se imprimió", "It was printed") : say("No se imprimió", "It was not printed"), null,
      () => find(job, printed, made));
    return made;
  };
  return element("div", { class: "need", "data-need": job.id },
    element("div", null, element("p", { class: "strong" }, `${job.printer} · ${job.id} · ${amountText(job.total)}`),
      element("p", null, job.next)),
    may("resolve") ? element("div", { class: "buttons" }, choice(true), choice(false)) : null);
}

function trouble(printer) {
  return element("div", { class: "need", "data-need": printer.name },
    element("div", null, element("p", { class: "strong" }, `${printer.name} · ${printer.cause ?? ""}`), element("p", null, printer.next ?? "")));
}

export function showAttention(jobs, printers, may) {
  const needs = [...jobs.filter((job) => job.state === "unknown").map((job) => unknown(job, may)),
    ...printers.filter((printer) => ["blocked", "unreachable"].includes(printer.state)).map(trouble)];
  byId("attention").hidden = needs.length === 0;
  byId("attention-list").replaceChildren(...needs);
}
