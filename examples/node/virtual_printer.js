// A virtual printer behind COM1; its paper comes out on standard output.
const { spawn } = require("node:child_process");
const { once } = require("node:events");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");

module.exports = async function startVirtualPrinter() {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), "zentaro-"));
  const link = path.join(folder, "printer");
  process.env.ZENTARO_SETTINGS = path.join(folder, "settings.ini");
  process.env.ZENTARO_BOOKS = path.join(folder, "books.db");
  fs.writeFileSync(process.env.ZENTARO_SETTINGS, `[Config\\ModComm]\nCOM1=${link}\n`);
  const printer = spawn("zentaro-printer", ["--link", link], { stdio: ["pipe", "inherit", "ignore"] });
  while (!fs.existsSync(link) && printer.exitCode === null) await new Promise((next) => setTimeout(next, 50));
  return {
    end: async () => {
      printer.stdin.end("quit\n");
      await once(printer, "close");
      fs.rmSync(folder, { recursive: true });
    },
  };
};
