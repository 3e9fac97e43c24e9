// The tills of a chain as a table at its centre: those that need somebody first, each to be opened.

import { byId, element } from "./dom.js";
import { say } from "./say.js";
import { ask } from "./service.js";
import { stateColor, stateWord, timeText } from "./words.js";

const open = new Set(); // names
let tills = [], next;

const blockedWords = {
  "books-older": say("libros más viejos: una persona decide", "older books: a person decides"),
  "refused-by-broker": say("el broker rechaza sus trabajos", "the broker refuses its jobs"),
  "two-with-one-name": say("dos cajas con un nombre", "two tills with one name"),
};
const sum = (till, value) => till.printers.reduce((all, printer) => all + value(printer), 0);
const worst = (till) => till.printers.find((printer) => printer.state !== "ready") ?? till.printers[0];
const unknown = (till) => sum(till, (printer) => printer.unknown.length);
const weight = (till) => (till.blocked ? 4 : 0) + (unknown(till) > 0 ? 3 : 0) + (till.online ? 0 : 2) + (till.printers.every((printer) => printer.state === "ready") ? 0 : 1);

function state(till) {
  if (!till.online) return element("span", { class: "chip bad" }, say("sin conexión", "offline"));
  if (till.blocked) return element("span", { class: "chip warn" }, blockedWords[till.blocked] ?? till.blocked);
  const printer = worst(till);
  return printer ? element("span", { class: `chip ${stateColor(printer.state)}` }, stateWord(printer.state)) : null;
}

function details(till) {
  return element("tr", { class: "details" }, element("td", { colspan: 7 }, ...till.printers.map((printer) => element("p", null,
    [printer.name, printer.machine, stateWord(printer.state), printer.cause, printer.next, printer.unknown.join(", "),
      printer.booksMiss > 0 ? say(`faltan ${printer.booksMiss} documentos en los libros`, `the books miss ${printer.booksMiss} documents`) : null]
      .filter(Boolean).join(" · ")))));
}

function row(till) {
  const name = element("button", { type: "button", class: "plain", "aria-expanded": String(open.has(till.name)), "data-till": till.name }, till.name);
  name.addEventListener("click", () => {
    if (!open.delete(till.name)) open.add(till.name);
    draw();
  });
  const first = element("tr", null, element("td", null, name), element("td", null, state(till)),
    element("td", { class: "amount" }, String(sum(till, (printer) => printer.queue))),
    element("td", { class: "amount" }, String(unknown(till))),
    element("td", { class: "amount wide" }, till.printers.map((printer) => printer.lastZ ?? "").join(" ")),
    element("td", { class: "wide" }, till.version), element("td", { class: "wide" }, timeText(till.since)));
  return open.has(till.name) ? [first, details(till)] : [first];
}

// Somebody may be on the name of a till: the focus stays there.
function draw() {
  const held = document.activeElement?.dataset.till;
  const text = byId("till-search").value.trim().toLowerCase();
  const shown = tills.filter((till) => till.name.toLowerCase().includes(text))
    .sort((one, other) => weight(other) - weight(one) || one.name.localeCompare(other.name));
  const names = [say("Caja", "Till"), say("Estado", "State"), say("Cola", "Queue"), say("No se sabe", "Unknown"), say("Último Z", "Last Z"),
    say("Versión", "Version"), say("Desde", "Since")];
  const classes = [false, false, "amount", "amount", "amount wide", "wide", "wide"];
  byId("tills").replaceChildren(element("thead", null, element("tr", null,
    ...names.map((name, index) => element("th", { scope: "col", class: classes[index] }, name)))),
  element("tbody", null, ...shown.flatMap(row)));
  if (held) document.querySelector(`[data-till="${held}"]`)?.focus();
  const online = tills.filter((till) => till.online).length;
  byId("tills-count").textContent = say(`${online} de ${tills.length} en línea`, `${online} of ${tills.length} online`);
}

// Asked for again and again while there are any; elsewhere than at a centre there are none.
export async function showChain() {
  try {
    tills = (await ask("GET", "v1/tills")).tills;
  } catch { /* the page says that the service is away */ }
  byId("chain").hidden = tills.length === 0;
  if (tills.length > 0) draw();
  clearTimeout(next);
  next = setTimeout(showChain, tills.length > 0 ? 5000 : 30000);
}

byId("till-search").addEventListener("input", draw);
byId("till-search").setAttribute("aria-label", say("Buscar caja", "Search till"));
byId("till-search").placeholder = say("Buscar caja", "Search till");
