// Puts the page together.

import { byId } from "./dom.js";
import { buildFaults, holds, showFaults } from "./faults.js";
import { allRows, showRow } from "./line.js";
import { showSheet } from "./paper.js";
import { showSample } from "./sample.js";
import { say, showLanguage } from "./say.js";
import { showState } from "./state.js";
import { listen } from "./stream.js";
import { saveTrace } from "./trace.js";

const now = { isThere: true, about: null, state: null, faults: [], line: { device: "", power: true }, clock: "", drawers: new Map() };

const lamp = (id, color) => { byId(id).dataset.color = color; };

// The little display of the machine: what it does, and how much that is.
function display() {
  if (!now.isThere || !now.line.power) return ["", ""];
  if (holds(now.faults, "cover-open")) return [say("TAPA ABIERTA", "COVER OPEN"), ""];
  if (holds(now.faults, "paper-out")) return [say("SIN PAPEL", "NO PAPER"), ""];
  const open = now.state.document;
  if (open.phase === "none") return [say("LISTA", "READY"), now.clock];
  return [open.title, open.status === 3 ? "" : `Bs ${open.total}`];
}

function drawers() {
  return [1, 2].map((number) => {
    const opened = now.drawers.get(`drawer-${number}`);
    return `${number}: ${opened ?? "—"}`;
  }).join(" · ");
}

function show() {
  if (!now.about || !now.state) return;
  showState(now.state, now.about, drawers());
  const ifThere = (color) => (now.isThere ? color : "off");
  lamp("power-lamp", ifThere(now.line.power ? "green" : "off"));
  lamp("paper-lamp", ifThere(holds(now.faults, "paper-out") ? "red" : holds(now.faults, "paper-near-end") ? "amber" : "green"));
  lamp("cover-lamp", ifThere(holds(now.faults, "cover-open") ? "red" : "green"));
  lamp("slip-lamp", ifThere(now.state.slip ? "green" : "off"));
  lamp("line-lamp", now.isThere && now.line.device ? "green" : "red");
  byId("device").textContent = !now.isThere ? say("la impresora no está", "the printer is gone")
    : now.line.device || say("línea cortada", "line cut");
  byId("empty-device").textContent = now.isThere ? now.line.device : "—";
  byId("clock").textContent = now.isThere ? now.clock : "";
  [byId("display-upper").textContent, byId("display-lower").textContent] = display();
}

const set = (key) => (value) => {
  now[key] = value;
  show();
};

showLanguage();
listen({
  about: (about) => {
    buildFaults(about);
    document.title = `${about.serial} · Zentaro`;
    set("about")(about);
  },
  state: set("state"),
  line: set("line"),
  clock: set("clock"),
  faults: (faults) => {
    showFaults(faults);
    set("faults")(faults);
  },
  sheet: showSheet,
  sample: showSample,
  row: (row) => {
    showRow(row);
    if (!row.name.startsWith("drawer-") || row.way !== "answer" || row.outcome !== "ok") return;
    now.drawers.set(row.name, row.time);
    show();
  },
}, (isThere) => {
  now.isThere = isThere;
  document.body.classList.toggle("away", !isThere);
  for (const panel of document.querySelectorAll("#printer, #faults")) panel.inert = !isThere;
  show();
  byId("notice").hidden = isThere;
  byId("notice").textContent = say("La impresora no responde; la página espera por ella.",
    "The printer does not answer; the page is waiting for it.");
});

byId("save-trace").addEventListener("click", () => saveTrace(allRows()));
for (const button of document.querySelectorAll("[data-go]")) {
  button.addEventListener("click", () => { document.body.dataset.view = button.dataset.go; });
}
