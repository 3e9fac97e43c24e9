// Small help with elements. Whatever comes from the line is only ever set as text.

export const byId = (id) => document.getElementById(id);

// element("p", { class: "x" }, "text", otherElement)
export function element(name, attributes, ...children) {
  const made = document.createElement(name);
  for (const [key, value] of Object.entries(attributes ?? {}))
    if (value !== false) made.setAttribute(key, value === true ? "" : value);
  made.append(...children.filter((child) => child !== null && child !== undefined));
  return made;
}

export function button(text, attributes, onClick) {
  const made = element("button", { type: "button", ...attributes }, text);
  made.addEventListener("click", onClick);
  return made;
}

export function saveFile(name, type, content) {
  const link = element("a", { href: URL.createObjectURL(new Blob([content], { type })), download: name });
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 10000);
}

// Keeps a box scrolled to its end until the user scrolls elsewhere. Call the result when something was added.
export function followEnd(box) {
  let follows = true;
  const toEnd = () => { if (follows) box.scrollTop = box.scrollHeight; };
  box.addEventListener("scroll", () => {
    if (box.clientHeight > 0) follows = box.scrollHeight - box.scrollTop - box.clientHeight < 40;
  });
  new ResizeObserver(toEnd).observe(box);
  return toEnd;
}
