// Puts the page together: what is known of printers and jobs, and drawing it anew when it changes.

import { tell } from "./ask.js";
import { byId } from "./dom.js";
import { showChain } from "./chain.js";
import { showAttention, showJobs } from "./jobs.js";
import { forgetDay, showPrinters } from "./printers.js";
import { say, showLanguage } from "./say.js";
import { ask, forgetToken, keepToken, listen, token } from "./service.js";

const printers = new Map(), jobs = new Map();
let rights = [], found = null; // found: the jobs that match what is searched

const may = (right) => rights.includes(right);
const isOfToday = (job) => new Date(job.accepted).toDateString() === new Date().toDateString();

// Somebody may be on a button of a card: the focus stays on that one, and never falls on another.
function draw() {
  const held = document.activeElement, place = held?.closest("[data-printer]")?.dataset.printer, act = held?.dataset.act;
  const known = [...jobs.values()].sort((one, other) => other.revision - one.revision);
  const byTime = [...known].sort((one, other) => other.accepted.localeCompare(one.accepted));
  showPrinters([...printers.values()], [...byTime].reverse(), may, draw);
  showAttention(known, [...printers.values()], may);
  showJobs(found ?? byTime.filter((job) => isOfToday(job) || !["printed", "not-printed"].includes(job.state)).slice(0, 200), found !== null);
  if (place && act) document.querySelector(`[data-printer="${place}"] [data-act="${act}"]`)?.focus();
}

let isDue = false;
function drawSoon() {
  if (isDue) return;
  isDue = true;
  setTimeout(() => { isDue = false; draw(); }, 60);
}

function showThere(isThere) {
  byId("lamp").dataset.color = isThere ? "green" : "red";
  byId("there").textContent = isThere ? say("en vivo", "live") : say("el servicio no responde; se espera", "the service does not answer; waiting");
}

function showEntry(problem) {
  byId("shop").hidden = true;
  byId("leave").hidden = true;
  byId("entry").hidden = false;
  byId("entry-problem").textContent = problem ?? "";
  byId("token").focus();
}

async function begin() {
  try {
    const state = await ask("GET", "v1/printers");
    rights = state.rights;
    for (const seen of [printers, jobs]) seen.clear(); // another token sees others
    state.printers.forEach((printer) => printers.set(printer.name, printer));
    const latest = await ask("GET", "v1/jobs?latest=500");
    latest.jobs.forEach((job) => jobs.set(job.id, job));
    byId("entry").hidden = true;
    byId("shop").hidden = false;
    byId("leave").hidden = false;
    draw();
    showChain();
    listen(latest.revision, {
      job: (job) => {
        jobs.set(job.id, job);
        if (job.kind === "Z" && job.state === "printed") forgetDay(job.printer);
        drawSoon();
      },
      printer: (printer) => { printers.set(printer.name, printer); drawSoon(); },
    }, (isThere, status) => {
      showThere(isThere);
      if (status === 401 || status === 403) showEntry(say("Este token ya no vale.", "This token counts no more."));
    });
  } catch (error) {
    if (error.status === 401 || error.status === 403) return showEntry(error.message);
    showThere(false);
    setTimeout(begin, 2000);
  }
}

let typed;
byId("search").addEventListener("input", () => {
  clearTimeout(typed);
  typed = setTimeout(async () => {
    const text = byId("search").value.trim();
    const answer = text === "" ? { jobs: null } : await ask("GET", `v1/jobs?search=${encodeURIComponent(text)}`).catch((error) => tell(error.message));
    if (!answer || text !== byId("search").value.trim()) return; // no answer is not "nothing matches"
    found = answer.jobs;
    draw();
  }, 250);
});
byId("entry").addEventListener("submit", (event) => {
  event.preventDefault();
  keepToken(byId("token").value.trim());
  begin();
});
byId("leave").addEventListener("click", () => {
  forgetToken();
  location.reload();
});

showLanguage();
byId("search").placeholder = say("Buscar id, RIF o número", "Search id, RIF or number");
byId("search").setAttribute("aria-label", byId("search").placeholder);
showThere(false);
if (token()) begin();
else showEntry();
