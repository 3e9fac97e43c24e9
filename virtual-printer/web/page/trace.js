// The frames of the session as a trace file: what `zentaro trace --replay` reads.

import { saveFile } from "./dom.js";

const perLine = 16;

// "02 38 1C 4E 03                                  .8.N."
export function dumpLines(hex) {
  const bytes = hex.split(" ").filter(Boolean);
  const lines = [];
  for (let at = 0; at < bytes.length; at += perLine) {
    const part = bytes.slice(at, at + perLine);
    const text = part.map((byte) => {
      const code = parseInt(byte, 16);
      return code < 0x20 || (code > 0x7E && code < 0xA0) ? "." : String.fromCharCode(code);
    });
    lines.push(`${part.join(" ")} `.padEnd(3 * perLine) + text.join(""));
  }
  return lines;
}

const words = { command: "Send", reset: "Send", noise: "Send", answer: "Read" };

export function saveTrace(rows) {
  const lines = rows.filter((row) => row.bytes && words[row.way]).flatMap((row) =>
    [`${words[row.way]} ${row.date} ${row.time}`, ...dumpLines(row.bytes)]);
  const latin = Uint8Array.from(lines.map((line) => `${line}\r\n`).join(""), (letter) => letter.charCodeAt(0));
  saveFile("zentaro-trace.txt", "application/octet-stream", latin);
}
