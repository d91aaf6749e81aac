// Makes elements. Texts are always texts, never markup: they come from themes.

export const byId = (id) => document.getElementById(id);

/** An element with attributes (functions become listeners, false ones are left out) and children. */
export function make(tag, attributes = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (typeof value === "function") element.addEventListener(name, value);
    else if (value !== false && value !== undefined) element.setAttribute(name, value === true ? "" : value);
  }
  element.append(...children.filter((child) => child !== null && child !== undefined));
  return element;
}

/** Puts `children` in the place of what `element` held. */
export function fill(element, ...children) {
  element.replaceChildren(...children.filter((child) => child !== null));
}

let newsTimer = 0;

/** Tells something in passing. */
export function tell(text) {
  const news = byId("news");
  news.textContent = text;
  news.classList.add("fresh");
  clearTimeout(newsTimer);
  newsTimer = setTimeout(() => news.classList.remove("fresh"), 6000);
}
