// The way to the printer and back: events, and the control lines that the page may say.

const token = document.querySelector("meta[name=token]").content;
const events = `events?token=${token}`;

// handlers: topic to function of the message's content. onChange learns whether the printer is there.
export function listen(handlers, onChange) {
  const source = new EventSource(events);
  for (const [topic, handler] of Object.entries(handlers))
    source.addEventListener(topic, (event) => handler(JSON.parse(event.data)));
  source.addEventListener("open", () => onChange(true));
  source.addEventListener("error", () => {
    onChange(false);
    if (source.readyState === EventSource.CLOSED) setTimeout(reloadWhenServed, 2000);
  });
}

// A closed stream was refused: by a printer that was started anew, whose page this is not (403), or because too
// many pages are open.
async function reloadWhenServed() {
  try {
    const response = await fetch(events);
    response.body.cancel();
    if (response.ok || response.status === 403) return location.reload();
  } catch { /* still away */ }
  setTimeout(reloadWhenServed, 2000);
}

// The last line of the reply; it begins with "ok" or "error".
export async function tell(line) {
  try {
    const response = await fetch("control", { method: "POST", headers: { "X-Token": token }, body: line });
    return (await response.text()).trim().split("\n").pop();
  } catch {
    return "error: the printer does not answer";
  }
}
