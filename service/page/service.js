// The way to the service: the token, requests, and the stream of events, which begins again where it stopped.

import { say } from "./say.js";

const linked = new URLSearchParams(location.hash.slice(1)).get("token");
if (linked) {
  sessionStorage.setItem("token", linked);
  history.replaceState(null, "", location.pathname); // nobody reads it over a shoulder
}

export const token = () => sessionStorage.getItem("token");
export const keepToken = (text) => sessionStorage.setItem("token", text);
export const forgetToken = () => sessionStorage.removeItem("token");

export class Refused extends Error {
  constructor(status, problem) {
    super(problem.detail ?? say("El servicio no responde.", "The service does not answer."));
    this.status = status;
    this.problem = problem;
  }
}

export async function ask(method, path, body) {
  const headers = { Authorization: `Bearer ${token()}` };
  if (body) headers["Content-Type"] = "application/json";
  let response;
  try {
    response = await fetch(path, { method, headers, body: body && JSON.stringify(body) });
  } catch {
    throw new Refused(0, {});
  }
  const answer = await response.json().catch(() => ({}));
  if (!response.ok) throw new Refused(response.status, answer);
  return answer;
}

const silence = 30000; // the service says something every ten seconds
const pause = (milliseconds) => new Promise((done) => { setTimeout(done, milliseconds); });

// handlers: "job" and "printer" to functions of their content. onChange learns whether the service is there, and the
// status of a refusal.
export async function listen(after, handlers, onChange) {
  for (let last = after; ;) {
    try {
      const response = await fetch("v1/events", { headers: { Authorization: `Bearer ${token()}`, "Last-Event-ID": last } });
      if (!response.ok) {
        onChange(false, response.status);
        if (response.status === 401 || response.status === 403) return;
        throw new Error();
      }
      onChange(true);
      for await (const event of eventsOf(response.body)) {
        last = event.id ?? last;
        handlers[event.event]?.(JSON.parse(event.data));
      }
    } catch { /* cut: once more */ }
    onChange(false);
    await pause(1500);
  }
}

async function* eventsOf(body) {
  const reader = body.pipeThrough(new TextDecoderStream()).getReader();
  for (let rest = ""; ;) {
    const { value, done } = await Promise.race([reader.read(), pause(silence).then(() => ({ done: true }))]);
    if (done) return void reader.cancel().catch(() => {});
    const blocks = (rest + value).split("\n\n");
    rest = blocks.pop();
    for (const block of blocks) {
      const event = Object.fromEntries(block.split("\n").map((line) => line.split(/: (.*)/s).slice(0, 2)));
      if (event.data) yield event;
    }
  }
}
