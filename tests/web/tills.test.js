// The page of the tills in a browser, on virtual printers: what a shop sees and presses. Every wait has the browser's bound of
// half a minute.
"use strict";
const assert = require("node:assert");
const { spawn, spawnSync } = require("node:child_process");
const fs = require("node:fs");
const http = require("node:http");
const os = require("node:os");
const path = require("node:path");
const { after, before, test } = require("node:test");
const { chromium } = require("playwright-core");

const folder = fs.mkdtempSync(path.join(os.tmpdir(), "zentaro-tills-"));
const program = (name) => path.join(process.env.PROGRAMS, name);
const env = { ...process.env, ZENTARO_BOOKS: path.join(folder, "books.db"), XDG_STATE_HOME: folder,
  ZENTARO_SETTINGS: path.join(folder, "settings.ini"), ZENTARO_LANG: "es" };
const complaints = [];
const running = [];
let url, browser, page, token, origin, shopServer;

async function start(name, words, ready) {
  const process = spawn(program(name), words, { env, stdio: ["ignore", "ignore", "pipe"] });
  running.push(process);
  let said = "";
  await new Promise((resolve) => process.stderr.on("data", (data) => {
    said += data;
    if (ready.test(said)) resolve();
  }));
  return said.match(ready)[1];
}

const addToken = (name, ...rights) => spawnSync(program("zentaro"), ["serve", "token", "add", name, ...rights], { env, encoding: "utf8" }).stdout.trim();
const fault = (plan) => spawnSync(program("zentaro"), ["printer", "tell", path.join(folder, "control"), plan], { env });

function put(id, body) {
  return fetch(`${url}/v1/jobs/${id}`, { method: "PUT", body: JSON.stringify({ printer: "caja1", ...body }),
    headers: { Authorization: `Bearer ${token}`, "Content-Type": "application/json" } });
}
const sale = (customer, price) => ({ sale: { documento: "factura", cliente: { nombre: customer, rif: "J-31234567-9" },
  renglones: [{ descripcion: "Arepa", precio: price, impuesto: 16 }], pagos: [{ monto: 1000 }] } });

before(async () => {
  fs.writeFileSync(env.ZENTARO_SETTINGS, "[Config\\EPSONZT]\nTimeOutZT=1\n");
  await start("zentaro-printer", ["--quiet", "--link", path.join(folder, "caja1"), "--serial", "ZPV0000001", "--realtime",
    "--control", path.join(folder, "control")], /ready: (.*)\n/);
  token = addToken("shop", "--rights", "sell,close,resolve,read");
  const button = fs.readFileSync(path.join(__dirname, "../../examples/web/button.html"));
  shopServer = http.createServer((_, answer) => answer.setHeader("Content-Type", "text/html").end(button));
  await new Promise((resolve) => shopServer.listen(0, "127.0.0.1", resolve));
  origin = `http://127.0.0.1:${shopServer.address().port}`;
  url = await start("zentaro", ["serve", "--listen", "127.0.0.1:0", "--origin", origin, "--printer", `caja1=${path.join(folder, "caja1")}`],
    /ready: (http.*)\n/);
  browser = await chromium.launch({ executablePath: "/usr/bin/chromium", args: ["--no-sandbox", "--disable-gpu", "--disable-quic",
    "--no-first-run", "--disable-background-networking", "--disable-component-update", "--disable-sync"] });
  page = await browser.newPage({ locale: "es-VE" });
  page.on("pageerror", (what) => complaints.push(what));
});

after(async () => {
  await browser.close();
  shopServer.close();
  for (const process of running.reverse()) process.kill();
  fs.rmSync(folder, { recursive: true });
});

const job = (id) => page.locator(`[data-job="${id}"]`);
const printer = page => page.locator("[data-printer=caja1]");

test("a token lets one in, a wrong one says so, and the link's token leaves the address", async () => {
  await page.goto(url);
  await page.fill("#token", "zt_wrong");
  await page.keyboard.press("Enter");
  await page.locator("#entry-problem", { hasText: "token" }).waitFor();
  await page.goto("about:blank");
  await page.goto(`${url}/#token=${token}`);
  await printer(page).locator(".chip", { hasText: "lista" }).waitFor();
  assert.strictEqual(new URL(page.url()).hash, "");
});

test("a sale is seen while it prints, and found by id, RIF and number; a customer's name stays a text", async () => {
  const body = sale("<b>Ana</b>", 12.5);
  body.sale.renglones = Array(6).fill(body.sale.renglones[0]);
  await put("F-1", body);
  await printer(page).locator("progress").waitFor();
  await job("F-1").locator(".chip", { hasText: "impreso" }).waitFor();
  assert.match(await job("F-1").textContent(), /00000001/);
  for (const [text, found] of [["J-31234567", 1], ["F-1", 1], ["nobody", 0]]) {
    await page.fill("#search", text);
    await page.waitForFunction((count) => document.querySelectorAll("[data-job]").length === count, found);
  }
  await page.fill("#search", "");
  await job("F-1").waitFor();
});

test("what the printer refuses needs a person, what waits can be taken back, and goes on when paper is in", async () => {
  fault("fault paper-out on open");
  await put("F-2", { ...sale("Luis", 1), patience: 300 });
  await page.locator("[data-need=caja1]", { hasText: "SIN PAPEL" }).waitFor();
  await put("F-3", { ...sale("Luis", 2), patience: 300 });
  await printer(page).getByLabel("Quitar F-3").click();
  await page.locator("#ask-title", { hasText: "F-3" }).waitFor();
  await page.locator("#ask-yes").click();
  await job("F-3").locator(".chip", { hasText: "no impreso" }).waitFor();
  fault("clear");
  await job("F-2").locator(".chip", { hasText: /^impreso/ }).waitFor();
  await page.locator("#attention").waitFor({ state: "hidden" });
});

test("the day and the Z by keyboard, behind a question", async () => {
  await printer(page).getByText("El día", { exact: true }).click();
  await printer(page).locator(".day").waitFor();
  await printer(page).getByText("Cierre Z", { exact: true }).focus();
  await page.keyboard.press("Enter");
  await page.locator("#ask[open]").waitFor();
  await page.keyboard.press("Enter"); // "No" has the focus
  await page.locator("#ask[open]").waitFor({ state: "hidden" });
  const asked = new Set();
  await page.route("**/v1/jobs/Z-*", (route) => route.abort(), { times: 1 });
  page.on("request", (request) => /jobs\/Z-/.test(request.url()) && asked.add(new URL(request.url()).pathname));
  await page.keyboard.press("Enter");
  await page.locator("#ask[open]").waitFor();
  // As quick as can be: the next question is asked before the first knows its end.
  await page.evaluate(() => { document.querySelector("#ask").close("no"); document.querySelector("[data-act=Z]").click(); });
  for (const came of ["#toast", "[data-job^=Z-]"]) {
    await page.locator("#ask-yes").click();
    await page.locator(came, { hasText: /responde|impreso/ }).waitFor();
    if (came === "#toast") await printer(page).getByText("Cierre Z", { exact: true }).press("Enter");
  }
  assert.strictEqual(asked.size, 1, "what was not answered is asked for under its own id again");
});

test("a reader has no buttons that act, English is as good, and a phone holds the page", async () => {
  const context = await browser.newContext({ viewport: { width: 360, height: 740 }, locale: "en-GB", colorScheme: "dark" });
  const phone = await context.newPage();
  await phone.goto(`${url}/#token=${addToken("reader", "--rights", "read")}`);
  await phone.locator("[data-printer=caja1] .chip", { hasText: "ready" }).waitFor();
  assert.strictEqual(await phone.getByText("Z closing", { exact: true }).locator("visible=true").and(phone.locator("button")).count(), 0);
  const width = await phone.evaluate(() => document.documentElement.scrollWidth);
  assert.ok(width <= 360, `${width} wide`);
  assert.ok(await phone.locator("#jobs tbody tr").count() > 0);
  const beyond = await phone.evaluate(() => { const box = document.querySelector("#jobs").parentElement; return box.scrollWidth - box.clientWidth; });
  assert.ok(beyond <= 0, `the table is ${beyond} too wide`);
  if (process.env.PICTURES) await phone.screenshot({ path: path.join(process.env.PICTURES, "phone.png"), fullPage: true });
  await context.close();
});

// As somebody's own server has it: from another origin, which the service was told of; a page that is loaded again sells nothing twice.
test("the example's button sells once", async () => {
  const shop = await browser.newPage();
  await shop.goto(`${origin}/`);
  await shop.locator("#service").fill(url);
  await shop.locator("#token").fill(token);
  await shop.evaluate(() => localStorage.setItem("sale", "web-1"));
  await shop.locator("#sell").click();
  await shop.locator("#said", { hasText: /^web-1: printed \d+/ }).waitFor();
  await shop.reload();
  await shop.evaluate(() => localStorage.setItem("sale", "web-1"));
  await shop.locator("#service").fill(url);
  await shop.locator("#token").fill("zt_wrong");
  await shop.locator("#sell").click();
  await shop.locator("#said", { hasText: "token" }).waitFor();
  await shop.locator("#token").fill(token);
  await shop.locator("#sell").click();
  await shop.locator("#said", { hasText: /^web-1: printed \d+/ }).waitFor();
  const { jobs } = await (await fetch(`${url}/v1/jobs?search=web-1`, { headers: { Authorization: `Bearer ${token}` } })).json();
  assert.strictEqual(jobs.length, 1);
  assert.strictEqual(jobs[0].attempt, 1);
  await shop.close();
});

test("a token that is taken away ends the page's session, and nothing was complained about", async () => {
  if (process.env.PICTURES) await page.screenshot({ path: path.join(process.env.PICTURES, "laptop.png"), fullPage: true });
  spawnSync(program("zentaro"), ["serve", "token", "remove", "shop"], { env });
  await page.reload();
  await page.locator("#entry").waitFor();
  assert.deepStrictEqual(complaints, []);
});
