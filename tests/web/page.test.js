// The page in a browser: what the library prints and what a user clicks, as a user sees it. Every wait has the
// browser's bound of half a minute.
"use strict";
const assert = require("node:assert");
const { spawn, spawnSync } = require("node:child_process");
const fs = require("node:fs");
const http = require("node:http");
const os = require("node:os");
const path = require("node:path");
const { after, before, test } = require("node:test");
const { chromium } = require("playwright-core");

const folder = fs.mkdtempSync(path.join(os.tmpdir(), "zentaro-web-"));
const device = path.join(folder, "printer");
const program = (name) => path.join(process.env.PROGRAMS, name);
const complaints = [];
let printer, url, browser, page;

function sell(customer) {
  const sale = { document: "invoice", customer: { name: customer, rif: "V-1" },
    lines: [{ description: "Pan", price: 25, quantity: 1, tax: 16 }], payments: [{ amount: 29 }] };
  return spawnSync(program("zentaro"), ["sale", "--device", device, "--timeout", "2", "-"],
    { input: JSON.stringify(sale), encoding: "utf8" });
}

function ask(method, where, headers) {
  return new Promise((resolve, reject) => {
    const request = http.request(url + where, { method, headers }, (response) => {
      resolve(response.statusCode);
      response.destroy();
    });
    request.on("error", reject);
    request.end(method === "POST" ? "fault paper-out" : undefined);
  });
}

const rows = (text) => page.locator("#rows details", { hasText: text });

before(async () => {
  printer = spawn(program("zentaro-printer"), ["--quiet", "--link", device, "--web", "0", "--lang", "es"], { stdio: ["ignore", "ignore", "pipe"] });
  let said = "";
  await new Promise((resolve) => printer.stderr.on("data", (data) => {
    said += data;
    if (said.includes("ready: ")) resolve();
  }));
  url = said.match(/^page: (.*)$/m)[1];
  browser = await chromium.launch({ executablePath: "/usr/bin/chromium", args: ["--no-sandbox", "--disable-gpu", "--disable-quic",
    "--no-first-run", "--disable-background-networking", "--disable-component-update", "--disable-sync"] });
  page = await browser.newPage({ locale: "es-VE" });
  for (const event of ["pageerror", "dialog", "requestfailed"]) page.on(event, (what) => complaints.push(event, what));
  page.on("console", (message) => complaints.push(message.text()));
  await page.goto(url);
});

after(async () => {
  await browser.close();
  printer.kill();
  fs.rmSync(folder, { recursive: true });
});

test("a sale of the library rolls out, and what a customer is called stays a text", async () => {
  const name = "<script>alert(1)</script>";
  assert.strictEqual(sell(name).status, 0);
  await page.locator("#roll figure", { hasText: "FACTURA 00000001" }).waitFor();
  const paper = await page.locator("#roll svg").textContent();
  for (const text of [`RAZON SOCIAL: ${name}`, "Bs 29,00"]) assert.ok(paper.includes(text), paper);
  assert.ok((await rows("abrir40").first().textContent()).includes(name));
  assert.ok((await page.locator("#day .total").textContent()).includes("29,00"));
});

test("a condition that is switched on refuses the next document, and the line tells why", async () => {
  const outOfPaper = page.locator("[data-effect=paper-out]");
  await outOfPaper.click();
  await page.locator("#paper-lamp[data-color=red]").waitFor();
  assert.notStrictEqual(sell("Ana").status, 0);
  const refused = rows("ERROR 20 SIN PAPEL").first();
  await refused.locator("summary").focus();
  await page.keyboard.press("Enter");
  assert.match(await refused.locator("pre").textContent(), /^02 .. 40 1C 30 30 32 30 1C /);
  await page.locator("#rows .command", { hasText: "abrir40" }).filter({ hasText: "Sin papel" }).first().waitFor();
  await outOfPaper.click();
  await page.locator("[data-effect=paper-out][aria-checked=false]").waitFor();
});

test("a fault of the line strikes the command it was meant for", async () => {
  await page.selectOption("#fault-command", "close");
  await page.click("[data-effect=lose-answer]");
  await page.locator("#armed", { hasText: "lose-answer on close once" }).waitFor();
  await page.fill("#plan", "paper-near-end on payment");
  await page.press("#plan", "Enter");
  const sold = sell("Eva");
  assert.strictEqual(sold.status, 0, `the sale finds out that it was closed: ${sold.stdout} ${sold.stderr}`);
  await page.locator("#paper-lamp[data-color=amber]").waitFor();
  await rows("sin respuesta").waitFor();
  assert.ok((await rows("sin respuesta").textContent()).includes("Pierde la respuesta"));
  await page.fill("#plan", "explode");
  await page.press("#plan", "Enter");
  await page.locator("#fault-error", { hasText: "explode" }).waitFor();
});

test("who has no program yet sees a sale, and what a lost answer makes of one", async () => {
  await page.click("#sample");
  await page.locator("#sample-outcome", { hasText: "Se imprimió la factura 00000003." }).waitFor();
  await page.click("#guided");
  await page.locator("#sample-outcome", { hasText: "salió una sola, la factura 00000004" }).waitFor();
  assert.strictEqual(await page.locator("#roll figure", { hasText: "FACTURA 00000004" }).count(), 1);
  assert.ok((await page.locator("#armed").textContent()).includes("paper-near-end"), "other faults stay");
});

test("plan, faults that wait and the line are seen without scrolling", async () => {
  for (const size of [{ width: 1280, height: 800 }, { width: 1366, height: 768 }]) {
    await page.setViewportSize(size);
    for (const id of ["#plan", "#armed", "#line-title", "#guided"]) {
      const box = await page.locator(id).boundingBox();
      const shown = await page.locator(id).evaluate((element) => {
        const { x, y, width, height } = element.getBoundingClientRect();
        return element.contains(document.elementFromPoint(x + width / 2, y + height / 2));
      });
      assert.ok(shown, `${id} at ${size.width}x${size.height}: ${JSON.stringify(box)}`);
    }
  }
});

test("a sheet and the session are saved, and the trace can be replayed", async () => {
  const saved = async (button) => {
    const [download] = await Promise.all([page.waitForEvent("download"), button.click()]);
    const file = path.join(folder, download.suggestedFilename());
    await download.saveAs(file);
    return file;
  };
  assert.ok(fs.readFileSync(await saved(page.locator("figure button").first()), "utf8").startsWith("<svg"));
  const trace = spawnSync(program("zentaro"), ["trace", await saved(page.locator("#save-trace"))], { encoding: "utf8" });
  assert.strictEqual(trace.status, 0, trace.stdout);
  assert.match(trace.stdout, /-> 42 item[^]*"Pan"[^]*<- 42 item[^]*"2900"/);
});

test("the page speaks both languages and asks nobody else", async () => {
  assert.strictEqual(await page.locator("#line-title").textContent(), "La línea");
  await page.click("[data-language=en]");
  await page.locator("#line-title", { hasText: "The line" }).waitFor();
  assert.deepStrictEqual(complaints.map(String), [], "no request elsewhere, nothing that the policy forbids");
});

test("only the page itself may act", async () => {
  const token = await page.locator("meta[name=token]").getAttribute("content");
  const rows = [
    ["GET", "", { Host: "rebound.example" }, 421],
    ["GET", "events?token=" + token, { Host: "rebound.example:80" }, 421],
    ["GET", "events", {}, 403],
    ["GET", "events?token=" + token, { Origin: "http://foreign.example" }, 403],
    ["POST", "control", { "X-Token": token, Origin: "http://foreign.example" }, 403],
    ["POST", "control", { "X-Token": token, Origin: "null" }, 403],
    ["POST", "control", { "X-Token": "guessed" }, 403],
    ["GET", "events?token=" + token, { Host: "localhost" }, 200],
    ["POST", "control", { "X-Token": token, Origin: url.slice(0, -1) }, 200],
  ];
  const second = spawnSync(program("zentaro-printer"), ["--web", new URL(url).port], { encoding: "utf8", timeout: 30000 });
  assert.match(second.stderr, /cannot listen there/, "two printers never share a port");
  for (const [method, where, headers, status] of rows)
    assert.strictEqual(await ask(method, where, headers), status, `${method} ${where} ${JSON.stringify(headers)}`);
});

test("while the line is gone the page does not show it", async () => {
  await page.fill("#plan", "hang-up=2 on open");
  await page.press("#plan", "Enter");
  await page.click("#sample");
  await page.locator("#device:not(:text('printer'))").waitFor();
  assert.strictEqual(await page.locator("#line-lamp").getAttribute("data-color"), "red");
  await page.locator("#device", { hasText: device }).waitFor();
});

test("after the printer has died nothing looks ready", async () => {
  printer.kill("SIGKILL");
  await page.locator("#notice:not([hidden])").waitFor();
  assert.strictEqual(await page.locator(".display").textContent(), "");
  assert.strictEqual(await page.locator(".lamp[data-color=green]").count(), 0);
  assert.strictEqual(await page.locator("#clock").textContent(), "");
  assert.ok(!(await page.locator("#device").textContent()).includes(device));
});
