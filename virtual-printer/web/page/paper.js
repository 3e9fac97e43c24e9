// The paper: sheets in the order of their beginning, the youngest at the printer's slot.

import { button, byId, element, followEnd, saveFile } from "./dom.js";
import { say } from "./say.js";

const kept = 100;  // sheets
const hiddenInSlot = 16;  // pixels of a sheet in work that have not come out yet
const likesMotion = !matchMedia("(prefers-reduced-motion: reduce)").matches;

const roll = byId("roll");
const toEnd = followEnd(roll);
const sheets = new Map();  // by id: { figure, strip, height }

// The drawing comes from the printer with all texts escaped, and the page's policy runs no script in it.
function drawingOf(sheet) {
  const drawing = new DOMParser().parseFromString(sheet.svg, "image/svg+xml").documentElement;
  drawing.setAttribute("role", "img");
  drawing.setAttribute("aria-label", [...drawing.querySelectorAll("text")].map((text) => text.textContent).join("\n"));
  return document.importNode(drawing, true);
}

function newSheet(sheet) {
  const strip = element("div", { class: "strip" });
  const tools = element("figcaption", {});
  const figure = element("figure", { class: sheet.kind === "roll" ? "sheet" : "sheet cheque" }, strip, tools);
  const made = { figure, strip, tools, height: 0 };
  sheets.set(sheet.id, made);
  roll.append(figure);
  if (sheets.size > kept) dropFirst();
  return made;
}

function dropFirst() {
  const [id, first] = sheets.entries().next().value;
  first.figure.remove();
  sheets.delete(id);
}

function addTools(made, sheet) {
  made.tools.replaceChildren(
    element("span", {}, sheet.title),
    button("SVG", { title: say("Guardar como SVG", "Save as SVG") },
      () => saveFile(`${sheet.title}.svg`, "image/svg+xml", sheet.svg)),
    button("PDF", { title: say("Imprimir o guardar como PDF", "Print or save as PDF") },
      () => printSheet(made, sheet)));
}

// One sheet alone, on a page of its own size.
function printSheet(made, sheet) {
  const style = new CSSStyleSheet();
  style.replaceSync(`@page { size: ${sheet.width + 24}px ${sheet.height + 24}px; margin: 12px; }`);
  document.adoptedStyleSheets = [style];
  for (const other of sheets.values()) other.figure.classList.toggle("printed", other === made);
  window.print();
}

// What has grown rolls out of the slot.
function rollOut(made, height, moves) {
  const grown = height - made.height;
  made.height = height;
  if (!moves || grown <= 0) return;
  made.strip.firstElementChild.animate(
    [{ transform: `translateY(${grown}px)` }, { transform: "none" }],
    { duration: Math.min(700, 150 + grown * 3), easing: "ease-out" });
}

export function showSheet(sheet) {
  byId("roll-empty").hidden = true;
  const wasAway = !sheets.has(sheet.id) && sheet.done;  // printed before this page was opened
  const made = sheets.get(sheet.id) ?? newSheet(sheet);
  made.strip.replaceChildren(drawingOf(sheet));
  made.figure.classList.toggle("working", !sheet.done);
  if (sheet.done) addTools(made, sheet);
  const scale = made.strip.clientWidth > 0 ? made.strip.clientWidth / sheet.width : 1;
  const height = (sheet.height - (sheet.done ? 0 : hiddenInSlot)) * scale;
  rollOut(made, height, likesMotion && !wasAway);
  toEnd();
}
