// Faults: switches for what is wrong with the printer, buttons for what strikes the line, plans for the rest.

import { button, byId, element } from "./dom.js";
import { say } from "./say.js";
import { tell } from "./stream.js";

const names = {
  "lose-answer": say("Pierde la respuesta", "Loses the answer"),
  "lose-command": say("Pierde el comando", "Loses the command"),
  "delay": say("Tarda", "Late by"),
  "wait": say("Pide esperar", "Asks to wait"),
  "bad-checksum": say("Suma errada", "Wrong checksum"),
  "bad-sequence": say("Secuencia errada", "Wrong sequence"),
  "repeat-answer": say("Repite la anterior", "Repeats the last"),
  "noise": say("Ruido", "Noise"),
  "pieces": say("Pedazos de", "Pieces of"),
  "truncate": say("Corta tras", "Cut after"),
  "hang-up": say("Cable suelto", "Cable out"),
  "power-cut": say("Corte de luz", "Power cut"),
  "paper-near-end": say("Poco papel", "Paper near its end"),
  "paper-out": say("Sin papel", "No paper"),
  "cover-open": say("Tapa abierta", "Cover open"),
  "memory-near-full": say("Memoria casi llena", "Memory nearly full"),
  "memory-full": say("Memoria llena", "Memory full"),
  "day-change": say("Exige el cierre Z", "Demands a Z closing"),
};
const units = { seconds: "s", bytes: "B" };

const nameOf = (effect) => names[effect] ?? effect;

async function order(line) {
  const reply = await tell(line);
  byId("fault-error").textContent = reply.startsWith("ok") ? "" : reply;
  return reply.startsWith("ok");
}

function newSwitch(effect) {
  const made = button(nameOf(effect.name), { role: "switch", "aria-checked": "false", "data-effect": effect.name },
    () => order(made.getAttribute("aria-checked") === "true" ? `clear ${effect.name}` : `fault ${effect.name}`));
  return made;
}

function valueField(effect) {
  const label = say(`Valor de ${nameOf(effect.name)}`, `Value of ${nameOf(effect.name)}`);
  if (effect.value === "place") {
    return element("select", { "aria-label": label },
      element("option", { value: "before" }, say("antes", "before")),
      element("option", { value: "inside" }, say("dentro", "inside")));
  }
  if (effect.value === "none") return null;
  return element("input", { type: "number", min: effect.value === "seconds" ? 0 : 1, step: "any", value: effect.standard,
    inputmode: "decimal", "aria-label": label });
}

function newStrike(effect) {
  const field = valueField(effect);
  const strike = button(nameOf(effect.name), { "data-effect": effect.name }, () => {
    const command = byId("fault-command").value;
    const plan = effect.name + (field ? `=${field.value}` : "") + (command ? ` on ${command}` : "") +
      byId("fault-times").value;
    byId("plan").value = plan;
    order(`fault ${plan}`);
  });
  const unit = units[effect.value];
  return element("span", { class: "strike" }, strike, field, unit ? element("small", {}, unit) : null);
}

export function buildFaults(about) {
  byId("conditions").replaceChildren(...about.effects.filter((effect) => effect.isCondition).map(newSwitch));
  byId("strikes").replaceChildren(...about.effects.filter((effect) => !effect.isCondition).map(newStrike));
  byId("fault-command").replaceChildren(
    element("option", { value: "" }, say("el próximo comando", "the next command")),
    ...about.commands.map((name) => element("option", {}, name)));
  byId("plan-form").addEventListener("submit", async (event) => {
    event.preventDefault();
    if (await order(`fault ${byId("plan").value}`)) byId("plan").value = "";
  });
}

const effectOf = (fault) => fault.plan.split(/[= ]/)[0];

export function showFaults(faults) {
  const armed = new Set(faults.map(effectOf));
  for (const made of byId("conditions").children)
    made.setAttribute("aria-checked", String(armed.has(made.dataset.effect)));
  byId("armed").replaceChildren(...faults.map((fault) => element("li", {}, element("code", {}, fault.plan),
    fault.holds ? element("span", { class: "chip bad" }, say("en curso", "in force")) : null,
    button("×", { "aria-label": say(`Quitar ${fault.plan}`, `Remove ${fault.plan}`) }, () => order(`clear ${effectOf(fault)}`)))));
  byId("armed").prepend(element("li", { class: "quiet" }, faults.length === 0
    ? say("Ninguna falla en espera ni en curso.", "No fault is waiting or in force.")
    : say("En espera o en curso:", "Waiting or in force:")));
}

// Whether the condition holds for the next command already.
export const holds = (faults, effect) => faults.some((fault) =>
  fault.plan === `${effect} always` || (effectOf(fault) === effect && fault.holds));
