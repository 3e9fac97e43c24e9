// A small sale that is never printed twice, over `zentaro host`. `node sale.js 2` prints at COM2; without a port it prints on a
// virtual printer.
const { setTimeout: sleep } = require("node:timers/promises");
const startHost = require("./host.js");
const startVirtualPrinter = require("./virtual_printer.js");

const SALE = [
  ["IniciarFactura", "Ana Pérez", "V-12345678"],
  ["PasarLineaFactura", "Café molido", 12.5, 2, 16],
  ["PasarLineaFactura", "Queso blanco", 8, 0.75, 0],
  ["RecibirPago", 40],
  ["CerrarComprobante"],
];

// Done; the first field of an answer is the command that it answers.
async function answered(printer) {
  return (await printer.get("nEnvironmentError")) === 0 && (await printer.call("response", 0)) === (await printer.get("nLastCommand"));
}

// The amount sold today; nothing is printed. Null when the printer does not say.
async function sold(printer) {
  await printer.call("RealizarCierre", 0, false);
  if (!(await answered(printer))) return null;
  const day = await printer.call("GetResultadoCierre");
  let cents = 0;
  for (const name of ["VentasExentas", "BaseGravable1", "BaseGravable2", "BaseGravable3"]) {
    cents += Math.round(100 * Number((await day.get(name)).value));
  }
  return cents;
}

// The status of the document, as soon as an answer is the one to its question; null when that takes longer than half a minute.
async function inStep(printer) {
  for (const pause of [500, 1000, 2000, 4000, 8000, 16000]) {
    await sleep(pause); // late answers gather while the port is open, and opening it throws them away
    try {
      await printer.put("PortOpen", false);
      await printer.put("PortOpen", true);
    } catch {
      continue; // an adapter that was pulled out
    }
    const status = await printer.call("GetStatusHASAR");
    if (status && (await answered(printer))) return status.get("statusDocumento");
  }
  return null;
}

// What became of a sale that did not go through: asked, never sent again.
async function settled(printer, before) {
  let document = await inStep(printer);
  if (document) {
    await printer.call("CancelarComprobante");
    document = await inStep(printer);
  }
  if (document) return ["STILL OPEN: have the document cancelled", 4];
  const after = document === null ? null : await sold(printer);
  if (after === null) return ["UNKNOWN: look at the paper, do not print again", 4];
  return after > before ? ["PRINTED", 0] : ["NOT PRINTED", 3];
}

async function sell(port) {
  const host = startHost();
  try {
    const printer = await host.create("Zentaro.CZentaro");
    await printer.put("CommPort", port);
    await printer.put("PortOpen", true);
    await printer.put("verifyCheckSum", true);
    for (let place = Math.floor(Math.random() * 90); place > 0; --place) {
      await printer.call("BuildOMB", 0x38, ["*"]); // another place in the sequence than the program before
    }
    const before = (await inStep(printer)) === 0 ? await sold(printer) : null;
    if (before === null) return ["NOT PRINTED: no printer, or a document is open", 3];
    for (const [name, ...args] of SALE) {
      console.log(`${name}: ${await printer.call(name, ...args)} ${await printer.get("sLastError")}`);
      if (!(await answered(printer))) return await settled(printer, before);
    }
    return ["PRINTED", 0];
  } finally {
    host.end();
  }
}

async function main() {
  const paper = process.argv[2] ? null : await startVirtualPrinter();
  try {
    const [text, status] = await sell(Number(process.argv[2] ?? 1));
    console.log(text);
    process.exitCode = status;
  } finally {
    await paper?.end();
  }
}

main().catch((error) => {
  console.error(error.message);
  process.exitCode = 2;
});
