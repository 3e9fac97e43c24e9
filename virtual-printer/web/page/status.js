// The bits of the two status words in words.

import { say } from "./say.js";

const printerBits = [
  [0x0004, say("tapa abierta", "cover open")],
  [0x0010, say("poco papel", "paper near its end")],
  [0x0020, say("sin papel", "no paper")],
  [0x0100, say("estación de cheques activa", "slip station on")],
];
const fiscalBits = [
  [0x0001, say("factura abierta", "invoice open")],
  [0x0002, say("nota de crédito abierta", "credit note open")],
  [0x0004, say("documento no fiscal abierto", "non-fiscal document open")],
  [0x0008, say("cierre parcial", "partially closed")],
  [0x0010, say("pago comenzado", "payment begun")],
  [0x0020, say("hay movimientos en el día", "the day has movements")],
  [0x0040, say("memoria casi llena", "memory nearly full")],
  [0x0080, say("memoria llena", "memory full")],
  [0x0100, say("se requiere el cierre Z", "Z required")],
  [0x8000, say("rechazado", "refused")],
];

const words = (bits, digits) => {
  const set = bits.filter(([bit]) => parseInt(digits, 16) & bit).map(([, text]) => text);
  return set.length > 0 ? `(${set.join(", ")})` : "";
};

export const printerWords = (digits) => words(printerBits, digits);
export const fiscalWords = (digits) => words(fiscalBits, digits);
