// Faults: switches for what is wrong with the printer, buttons for what strikes the line, plans for the rest.

import { button, byId, element } from "./dom.js";
import { say } from "./say.js";
import { tell } from "./stream.js";
import { commandName, effectName, effectOf } from "./words.js";

const units = { seconds: "s", bytes: "B" };

async function order(line) {
  const reply = await tell(line);
  byId("fault-error").textContent = reply.startsWith("ok") ? "" : reply;
  return reply.startsWith("ok");
}

function newSwitch(effect) {
  const made = button(effectName(effect.name), { role: "switch", "aria-checked": "false", "data-effect": effect.name },
    () => order(made.getAttribute("aria-checked") === "true" ? `clear ${effect.name}` : `fault ${effect.name}`));
  return made;
}

function valueField(effect) {
  const label = say(`Valor de ${effectName(effect.name)}`, `Value of ${effectName(effect.name)}`);
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
  const strike = button(effectName(effect.name), { "data-effect": effect.name }, () => {
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
    ...about.commands.map((name) => element("option", { value: name }, commandName(name))));
  byId("plan-form").addEventListener("submit", async (event) => {
    event.preventDefault();
    if (await order(`fault ${byId("plan").value}`)) byId("plan").value = "";
  });
}

export function showFaults(faults) {
  const armed = new Set(faults.map((fault) => effectOf(fault.plan)));
  for (const made of byId("conditions").children)
    made.setAttribute("aria-checked", String(armed.has(made.dataset.effect)));
  byId("armed").replaceChildren(...faults.map((fault) => element("li", {}, element("code", {}, fault.plan),
    fault.holds ? element("span", { class: "chip bad" }, say("en curso", "in force")) : null,
    button("×", { "aria-label": say(`Quitar ${fault.plan}`, `Remove ${fault.plan}`) }, () => order(`clear ${effectOf(fault.plan)}`)))));
  byId("armed").prepend(element("li", { class: "quiet" }, faults.length === 0
    ? say("Ninguna falla en espera ni en curso.", "No fault is waiting or in force.")
    : say("En espera o en curso:", "Waiting or in force:")));
}

// Whether the condition holds for the next command already.
export const holds = (faults, effect) => faults.some((fault) =>
  fault.plan === `${effect} always` || (effectOf(fault.plan) === effect && fault.holds));
