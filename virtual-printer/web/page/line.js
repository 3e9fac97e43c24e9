// The line, row by row: commands, answers and what else was heard, each to open as bytes.

import { byId, element, followEnd } from "./dom.js";
import { say } from "./say.js";
import { printerWords, fiscalWords } from "./status.js";
import { dumpLines } from "./trace.js";
import { commandName, effectName, effectOf } from "./words.js";

const kept = 1000;
// Effects that keep an answer back, and effects that change its bytes.
const silent = ["lose-answer", "lose-command", "hang-up", "power-cut"];
const changing = ["bad-checksum", "bad-sequence", "repeat-answer", "noise", "truncate"];

const box = byId("rows");
const toEnd = followEnd(box);
const shown = new Map();  // by row number: { row, details }

export const allRows = () => [...shown.values()].map(({ row }) => row);

const other = {
  noise: () => [say("ruido", "noise"), say("bytes que no son un comando", "bytes that are no command")],
  reset: () => [say("reinicio", "reset"), say("anula el documento abierto", "cancels the open document")],
  power: (row) => row.name === "on" ? [say("encendida", "power on"), ""] : [say("apagada", "power off"), ""],
};

function faultChips(row) {
  const made = row.faults.map((fault) => element("span", { class: fault.endsWith(" once") ? "chip bad" : "chip warn", title: fault }, effectName(effectOf(fault))));
  if (row.faults.some((fault) => silent.includes(effectOf(fault))))
    made.push(element("span", { class: "chip" }, say("sin respuesta", "no answer")));
  return made;
}

function outcomeChips(row) {
  const made = [row.outcome === "refused"
    ? element("span", { class: "chip warn" }, say("rechazado", "refused"))
    : element("span", { class: "chip good" }, "OK")];
  if (row.faults.some((fault) => changing.includes(effectOf(fault))))
    made.push(element("span", { class: "chip bad" }, say("alterada", "changed")));
  return made;
}

function summary(row, took) {
  // Empty fields at the end say nothing.
  const text = (row.fields ?? []).map((field) => field || "–").join(" · ").replace(/( ?· –)+$/, "");
  if (row.way === "command") {
    return [element("time", {}, row.time), element("b", { class: "arrow" }, "→"),
      element("span", { class: "name", title: row.name }, commandName(row.name), element("small", {}, row.code)),
      element("span", { class: "fields" }, text), ...faultChips(row)];
  }
  if (row.way === "answer") {
    return [element("time", {}, took), element("b", { class: "arrow" }, "←"),
      ...outcomeChips(row), element("span", { class: "fields" }, text)];
  }
  const [name, note] = other[row.way](row);
  return [element("time", {}, row.time), element("b", { class: "arrow" }, "•"),
    element("span", { class: "name" }, name), element("span", { class: "fields" }, note)];
}

function words(row) {
  if (row.way === "power" || row.way === "reset") return [];
  const lines = [];
  if (row.exchange) lines.push([say("Secuencia", "Sequence"), String(row.sequence)], [say("Código", "Code"), row.code]);
  if (row.way === "answer") {
    lines.push([say("Estado de la impresora", "Printer status"), `${row.printerStatus} ${printerWords(row.printerStatus)}`],
      [say("Estado fiscal", "Fiscal status"), `${row.fiscalStatus} ${fiscalWords(row.fiscalStatus)}`]);
  }
  if (row.faults?.length > 0) lines.push([say("Fallas", "Faults"), row.faults.join("; ")]);
  (row.fields ?? []).forEach((field, at) =>
    lines.push([say(`Campo ${at + 1}`, `Field ${at + 1}`), field || say("(vacío)", "(empty)")]));
  return lines.flatMap(([name, value]) => [element("dt", {}, name), element("dd", {}, value)]);
}

function fill(details, row) {
  const command = [...shown.values()].find((each) => each.row.exchange === row.exchange && each.row.way === "command");
  const took = command ? `+${row.ms - command.row.ms} ms` : row.time;
  const bytes = dumpLines(row.bytes).join("\n") + (row.size * 3 > row.bytes.length + 1 ? "\n…" : "");
  details.className = `row ${row.way}`;
  details.classList.toggle("is-status", row.name === "status");
  details.replaceChildren(element("summary", {}, ...summary(row, took)),
    element("dl", { class: "facts" }, ...words(row)),
    row.bytes ? element("pre", {}, bytes) : element("p", { class: "quiet" }, ""));
}

export function showRow(row) {
  byId("rows-empty").hidden = true;
  const known = shown.get(row.row);
  const details = known?.details ?? element("details", {});
  shown.set(row.row, { row, details });
  fill(details, row);
  if (!known) box.append(details);
  if (shown.size > kept) {
    const [number, first] = shown.entries().next().value;
    first.details.remove();
    shown.delete(number);
  }
  toEnd();
}

byId("hide-status").addEventListener("change", (event) => box.classList.toggle("without-status", event.target.checked));
