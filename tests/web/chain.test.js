// The tills of a chain on the centre's page, in a browser, with a real broker: who is there, who is not, and what needs somebody.
"use strict";
const assert = require("node:assert");
const { spawn, spawnSync } = require("node:child_process");
const fs = require("node:fs");
const net = require("node:net");
const os = require("node:os");
const path = require("node:path");
const { after, before, test } = require("node:test");
const { chromium } = require("playwright-core");

const folder = fs.mkdtempSync(path.join(os.tmpdir(), "zentaro-chain-page-"));
const program = (name) => path.join(process.env.PROGRAMS, name);
const running = new Map(), complaints = [];
let browser, page;

const envOf = (name) => ({ ...process.env, ZENTARO_BOOKS: path.join(folder, name, "books.db"), XDG_STATE_HOME: path.join(folder, name),
  ZENTARO_SETTINGS: path.join(folder, "settings.ini"), ZENTARO_LANG: "en" });

function start(name, command, words, ready) {
  const child = spawn(command, words, { env: envOf(name), stdio: ["ignore", "ignore", "pipe"] });
  running.set(name, child);
  let said = "";
  return new Promise((resolve) => child.stderr.on("data", (data) => {
    said += data;
    if (ready.test(said)) resolve(said.match(ready)[1]);
  }));
}

const freePort = () => new Promise((resolve) => {
  const server = net.createServer().listen(0, "127.0.0.1", () => {
    const { port } = server.address();
    server.close(() => resolve(port));
  });
});

before(async () => {
  fs.writeFileSync(path.join(folder, "settings.ini"), "[Config\\EPSONZT]\nTimeOutZT=1\n");
  const port = await freePort(), broker = `mqtt://127.0.0.1:${port}`;
  fs.writeFileSync(path.join(folder, "broker.conf"), `listener ${port} 127.0.0.1\nallow_anonymous true\n`);
  await start("broker", "mosquitto", ["-c", path.join(folder, "broker.conf")], /(running)/);
  for (const till of ["norte", "sur"]) {
    fs.mkdirSync(path.join(folder, till));
    await start(`${till}-printer`, program("zentaro-printer"), ["--quiet", "--link", path.join(folder, `${till}.tty`), "--serial",
      till.toUpperCase()], /ready: (.*)\n/);
    await start(till, program("zentaro"), ["serve", "--listen", "none", "--centre", broker, "--till", till, "--printer",
      `caja=${path.join(folder, `${till}.tty`)}`], /ready: (.*)\n/);
  }
  fs.mkdirSync(path.join(folder, "centre"));
  const token = spawnSync(program("zentaro"), ["serve", "token", "add", "all", "--rights", "sell,close,resolve,read"],
    { env: envOf("centre"), encoding: "utf8" }).stdout.trim();
  const url = await start("centre", program("zentaro"), ["serve", "--listen", "127.0.0.1:0", "--tills", broker], /ready: (http.*)\n/);
  browser = await chromium.launch({ executablePath: "/usr/bin/chromium", args: ["--no-sandbox", "--disable-gpu", "--disable-quic",
    "--no-first-run", "--disable-background-networking", "--disable-component-update", "--disable-sync"] });
  page = await browser.newPage({ locale: "en-GB", viewport: { width: 390, height: 800 } });
  page.on("pageerror", (what) => complaints.push(what));
  await page.goto(`${url}/#token=${token}`);
});

after(async () => {
  await browser.close();
  for (const child of [...running.values()].reverse()) child.kill("SIGKILL");
  fs.rmSync(folder, { recursive: true });
});

const row = (till) => page.locator("#tills tr", { has: page.locator(`[data-till="${till}"]`) });

test("shows each till, opens it, and says first who is away", async () => {
  await page.reload(); // behind the connection of the tills
  await row("norte").getByText("ready").waitFor({ timeout: 60000 });
  await row("sur").getByText("ready").waitFor({ timeout: 60000 });
  await row("norte").getByRole("button").press("Enter");
  await page.locator(".details", { hasText: "NORTE" }).waitFor();
  running.get("sur").kill("SIGTERM");
  await row("sur").getByText("offline").waitFor({ timeout: 60000 });
  assert.equal(await page.locator("#tills tbody [data-till]").first().textContent(), "sur", "what needs somebody stands first");
  assert.equal(await page.locator("#tills-count").textContent(), "1 of 2 online");
  await page.locator("#till-search").fill("nor");
  assert.equal(await page.locator("#tills [data-till]").count(), 1);
  const width = await page.evaluate(() => document.documentElement.scrollWidth - window.innerWidth);
  assert.ok(width <= 0, "a phone has no sideways scrolling");
  const table = await page.evaluate(() => { const box = document.querySelector("#tills").parentElement; return box.scrollWidth - box.clientWidth; });
  assert.ok(table <= 0, "nor has its table");
  assert.deepEqual(complaints, []);
});
