// A question before something that cannot be taken back, and a word about what came of it.

import { byId } from "./dom.js";

function answered(title, text, yes) {
  byId("ask-title").textContent = title;
  byId("ask-text").textContent = text;
  byId("ask-yes").textContent = yes;
  const box = byId("ask");
  box.returnValue = "no";
  box.showModal();
  return new Promise((answer) => {
    box.addEventListener("close", () => answer(box.returnValue === "yes"), { once: true });
  });
}

// A box is gone from the screen before its "close" comes: a next question that is quicker waits for it, and each for the
// one before it, else it would take that one's answer.
let before = Promise.resolve();
export function sure(title, text, yes) {
  const next = () => answered(title, text, yes);
  before = before.then(next, next);
  return before;
}

let gone;
export function tell(text) {
  const toast = byId("toast");
  toast.textContent = text;
  toast.hidden = false;
  clearTimeout(gone);
  gone = setTimeout(() => { toast.hidden = true; }, 6000);
}

// Does something for a button, which waits meanwhile; what is refused is told.
export async function attempt(button, work) {
  button.disabled = true;
  try {
    return await work();
  } catch (error) {
    tell(error.message);
    return null;
  } finally {
    button.disabled = false;
  }
}
