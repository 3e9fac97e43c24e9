// Puts the page together.

import { byId } from "./dom.js";
import { buildFaults, holds, showFaults } from "./faults.js";
import { allRows, showRow } from "./line.js";
import { showSheet } from "./paper.js";
import { say, showLanguage } from "./say.js";
import { showState } from "./state.js";
import { listen } from "./stream.js";
import { saveTrace } from "./trace.js";

const now = { about: null, state: null, faults: [], line: { device: "", power: true }, clock: "", drawers: new Map() };

const lamp = (id, color) => { byId(id).dataset.color = color; };

// The little display of the machine: what it does, and how much that is.
function display() {
  if (!now.line.power) return ["", ""];
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
  lamp("power-lamp", now.line.power ? "green" : "off");
  lamp("paper-lamp", holds(now.faults, "paper-out") ? "red" : holds(now.faults, "paper-near-end") ? "amber" : "green");
  lamp("cover-lamp", holds(now.faults, "cover-open") ? "red" : "green");
  lamp("slip-lamp", now.state.slip ? "green" : "off");
  lamp("line-lamp", now.line.device ? "green" : "red");
  byId("device").textContent = now.line.device || say("línea cortada", "line cut");
  byId("empty-device").textContent = now.line.device;
  byId("clock").textContent = now.clock;
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
  row: (row) => {
    showRow(row);
    if (!row.name.startsWith("drawer-") || row.way !== "answer" || row.outcome !== "ok") return;
    now.drawers.set(row.name, row.time);
    show();
  },
}, (isThere) => {
  byId("notice").hidden = isThere;
  byId("notice").textContent = say("La impresora no responde; la página espera por ella.",
    "The printer does not answer; the page is waiting for it.");
});

byId("save-trace").addEventListener("click", () => saveTrace(allRows()));
for (const button of document.querySelectorAll("[data-go]")) {
  button.addEventListener("click", () => { document.body.dataset.view = button.dataset.go; });
}
