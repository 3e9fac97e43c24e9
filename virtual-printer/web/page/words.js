// What effects and commands are called, in the language of the page. Plans and logs have their own names for them.

import { say } from "./say.js";

const effects = {
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

const commands = {
  "status": say("estado", "status"),
  "closing": say("cierre X o Z", "X or Z closing"),
  "memory": say("memoria fiscal", "fiscal memory"),
  "open": say("abrir", "open"),
  "text": say("texto", "text"),
  "item": say("renglón", "item"),
  "subtotal": say("subtotal", "subtotal"),
  "payment": say("pago", "payment"),
  "close": say("cerrar", "close"),
  "open-dnf": say("abrir no fiscal", "open non-fiscal"),
  "text-dnf": say("texto no fiscal", "non-fiscal text"),
  "close-dnf": say("cerrar no fiscal", "close non-fiscal"),
  "cut": say("cortar", "cut"),
  "feed": say("avanzar papel", "feed"),
  "set-clock": say("poner el reloj", "set the clock"),
  "clock": say("reloj", "clock"),
  "header": say("encabezado", "header"),
  "footer": say("pie", "footer"),
  "drawer-1": say("gaveta 1", "drawer 1"),
  "drawer-2": say("gaveta 2", "drawer 2"),
  "serial": say("serial", "serial number"),
  "slip-on": say("cheques sí", "slip on"),
  "slip-off": say("cheques no", "slip off"),
  "cheque": say("cheque", "cheque"),
  "endorse": say("endoso", "endorsement"),
  "unknown": say("desconocido", "unknown"),
};

// "lose-answer on close once" is of the effect "lose-answer", and so is "noise=inside" of "noise".
export const effectOf = (plan) => plan.split(/[= ]/)[0];
export const effectName = (effect) => effects[effect] ?? effect;
export const commandName = (command) => commands[command] ?? command;
