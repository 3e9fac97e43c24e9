// A small sale that is never printed twice, over `zentaro host`. `node sale.js 2` prints at COM2; without a port it prints on a
// virtual printer.
const startHost = require("./host.js");
const startVirtualPrinter = require("./virtual_printer.js");

const SALE = {
  document: "invoice",
  customer: { name: "Ana Pérez", rif: "V-12345678" },
  lines: [
    { description: "Café molido", price: "12.50", quantity: 2, tax: 16 },
    { description: "Queso blanco", price: 8, quantity: "0.75", tax: 0 },
  ],
  payments: [{ amount: 40 }],
};

async function sell(port) {
  const host = startHost();
  try {
    const printer = await host.create("Zentaro.CZentaro");
    await printer.put("CommPort", port);
    await printer.put("PortOpen", true);
    // Under an id of the program's own nothing is ever printed twice, also after a power cut.
    return await printer.sell(SALE, "F-1", console.log);
  } finally {
    host.end();
  }
}

// What is on paper, what is not; else somebody has to look.
function told({ verdict }) {
  if (["printed", "printed-in-part", "already-printed"].includes(verdict)) return ["PRINTED", 0];
  if (["not-printed", "unreachable", "busy"].includes(verdict)) return ["NOT PRINTED", 3];
  return [verdict.startsWith("still-") ? "STILL OPEN" : "UNKNOWN", 4];
}

async function main() {
  const paper = process.argv[2] ? null : await startVirtualPrinter();
  try {
    const verdict = await sell(Number(process.argv[2] ?? 1));
    const [words, status] = told(verdict);
    console.log(`${words}: number ${verdict.number}, total ${verdict.total}. ${verdict.next}`);
    process.exitCode = status;
  } finally {
    await paper?.end();
  }
}

main().catch((error) => {
  console.error(error.message);
  process.exitCode = 2;
});
