// What states, kinds and amounts are called.

import { say } from "./say.js";

const states = {
  "queued": ["", say("en cola", "queued")],
  "printing": ["warn", say("imprimiendo", "printing")],
  "printed": ["good", say("impreso", "printed")],
  "not-printed": ["bad", say("no impreso", "not printed")],
  "unknown": ["warn", say("no se sabe", "unknown")],
  "ready": ["good", say("lista", "ready")],
  "busy": ["good", say("imprime", "printing")],
  "unreachable": ["bad", say("no responde", "unreachable")],
  "blocked": ["warn", say("espera a alguien", "needs a person")],
};
const kinds = {
  "invoice": say("factura", "invoice"),
  "credit-note": say("nota de crédito", "credit note"),
  "X": say("cierre X", "X closing"),
  "Z": say("cierre Z", "Z closing"),
};

export const stateWord = (state) => states[state]?.[1] ?? state;
export const stateColor = (state) => states[state]?.[0] ?? "";
export const kindWord = (kind) => kinds[kind] ?? kind;
export const lampColor = (state) => ({ ready: "green", busy: "green", blocked: "amber", unreachable: "red" })[state];
export const numberText = (number) => (number === null ? "" : String(number).padStart(8, "0"));
export const amountText = (amount) => (amount === null ? ""
  : `Bs ${Number(amount).toLocaleString(say("es-VE", "en-GB"), { minimumFractionDigits: 2 })}`);
export const timeText = (moment) => (moment === null ? ""
  : new Date(moment).toLocaleTimeString(say("es-VE", "en-GB"), { hour: "2-digit", minute: "2-digit" }));
