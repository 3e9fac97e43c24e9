// Two things to see without a program of one's own: a sale, and a sale whose last answer is lost.

import { byId, element } from "./dom.js";
import { say } from "./say.js";
import { tell } from "./stream.js";

let isGuided = false;

const number = (detail) => detail.padStart(8, "0");

const outcomes = {
  "running": () => [say("Vendiendo…", "Selling…")],
  "printed": ({ detail }) => [say(`Se imprimió la factura ${number(detail)}.`, `Invoice ${number(detail)} was printed.`)],
  "unanswered": ({ detail }) => [
    say("El cierre llegó a la impresora y su respuesta se perdió.", "The close reached the printer, and its answer was lost."),
    say(`Antes de repetir se preguntó el estado: salió una sola, la factura ${number(detail)}. Véala en el papel.`,
      `Before repeating anything the status was asked: there is one, invoice ${number(detail)}. See it on the paper.`),
    say("Un programa que repite sin preguntar imprime dos.", "A program that repeats without asking prints two."),
  ],
  "not-printed": () => [say("No salió ninguna factura: el documento quedó anulado.", "No invoice was printed: the document was cancelled.")],
  "refused": ({ detail }) => [say(`La impresora lo rechazó: ${detail}.`, `The printer refused it: ${detail}.`)],
  "unknown": () => [say("La impresora no responde; no se sabe.", "The printer does not answer; nobody knows.")],
};

function showSteps(steps) {
  byId("sample-outcome").replaceChildren(...steps.map((step) => element("li", {}, step)));
}

export function showSample(sample) {
  const steps = outcomes[sample.end](sample);
  showSteps(isGuided ? [say("La falla espera al cierre.", "The fault waits for the close."), ...steps] : steps);
  const isRunning = sample.end === "running";
  for (const id of ["sample", "guided"]) byId(id).disabled = isRunning;
  if (!isRunning) isGuided = false;
}

async function begin(lines) {
  for (const line of lines) {
    const reply = await tell(line);
    if (!reply.startsWith("ok")) return showSteps([reply]);
  }
}

byId("sample").addEventListener("click", () => begin(["sample"]));
byId("guided").addEventListener("click", () => {
  isGuided = true;
  begin(["clear lose-answer", "fault lose-answer on close", "sample"]);
});
