// A small sale over `zentaro host`. `node sale.js 2` prints on the printer at COM2; without a port it prints on a virtual printer.
const { spawn } = require("node:child_process");
const { once } = require("node:events");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");
const readline = require("node:readline");

// Starts `zentaro host`; the function that it gives sends one request and waits for its result.
function startHost(environment) {
  const host = spawn("zentaro", ["host"], { env: environment, stdio: ["pipe", "pipe", "inherit"] });
  const lines = readline.createInterface({ input: host.stdout })[Symbol.asyncIterator]();
  const request = async (method, params) => {
    host.stdin.write(JSON.stringify({ jsonrpc: "2.0", id: 1, method, params }) + "\n");
    const { value } = await lines.next();
    const answer = JSON.parse(value);
    if (answer.error) throw new Error(`${answer.error.code}: ${answer.error.message}`);
    return answer.result;
  };
  return { request, end: () => host.stdin.end() };
}

async function sell(port, environment) {
  const { request, end } = startHost(environment);
  try {
    const { object } = await request("create", { class: "Zentaro.CZentaro" });
    const call = async (name, ...args) => (await request("call", { object, name, args })).value;
    const step = async (name, ...args) => {
      const outcome = await call(name, ...args);
      console.log(`${name}: ${outcome}`);
      if (outcome !== 0) throw new Error(await call("EnvironmentError"));
    };
    await request("put", { object, name: "CommPort", value: port });
    await request("put", { object, name: "PortOpen", value: true });
    await step("IniciarFactura", "Ana Pérez", "V-12345678");
    await step("PasarLineaFactura", "Café molido", 12.5, 2, 16);
    await step("PasarLineaFactura", "Queso blanco", 8, 0.75, 0);
    await step("RecibirPago", 40);
    await step("CerrarComprobante");
  } finally {
    end();
  }
}

async function sellOnAVirtualPrinter() {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), "zentaro-"));
  const link = path.join(folder, "printer");
  const settings = path.join(folder, "settings.ini");
  fs.writeFileSync(settings, `[Config\\ModComm]\nCOM1=${link}\n`);
  const printer = spawn("zentaro-printer", ["--link", link], { stdio: ["pipe", "inherit", "inherit"] });
  try {
    while (!fs.existsSync(link) && printer.exitCode === null) await new Promise((next) => setTimeout(next, 50));
    await sell(1, { ...process.env, ZENTARO_SETTINGS: settings });
  } finally {
    printer.stdin.end("quit\n");
    await once(printer, "close");
    fs.rmSync(folder, { recursive: true });
  }
}

const port = process.argv[2];
(port ? sell(Number(port), process.env) : sellOnAVirtualPrinter()).catch((error) => {
  console.error(error.message);
  process.exitCode = 1;
});
