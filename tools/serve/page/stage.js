// The pictures of the keyboard, and the keys that lie over them as buttons.

import { byId, fill, make, tell } from "./dom.js";
import { fit, onPixelRatio } from "./fit.js";
import { ask, loadPicture } from "./server.js";
import { compared, parametersOf, parametersOfKeyplane, setKnown, view } from "./view.js";

const first = byId("first");
const second = byId("second");
const keysGroup = byId("keys");
const curtain = first.querySelector(".curtain");
const divider = byId("divider");
const kGap = 12;

/** Grows with every version and change of the settings: pictures of before are out of date. */
let generation = 0;
/** The keyboard's size in points; a guess until the first answer. */
let size = { width: 320, height: 216 };
let keys = [];
let shown = { scale: 2, zoom: 1 };
let pressed = [];
let marked = new Set();
let keysAsked = "";
/** What the looks are called. */
let names = { theme: "", other: "", system: "The system’s own look" };
const latest = { theme: 0, second: 0 };

export const allKeys = () => keys;
export const outdate = () => { generation += 1; };
export const setNames = (theme, other) => { names = { ...names, theme, other }; };

function room() {
  const box = byId("sides").getBoundingClientRect();
  const captions = compared() ? 26 : 0;
  return { width: Math.floor(box.width), height: Math.max(160, Math.floor(box.height) - captions) };
}

/** Two keyboards stand side by side or one below the other, whichever leaves them larger. */
function arrange() {
  const all = room();
  const comparison = compared();
  const single = fit(size, all);
  if (!comparison || comparison.slider) return { ...single, column: false };
  const row = fit(size, { width: (all.width - kGap) / 2, height: all.height });
  const column = fit(size, { width: all.width, height: (all.height - 26 - kGap) / 2 });
  return row.zoom >= column.zoom ? { ...row, column: false } : { ...column, column: true };
}

function resize() {
  for (const screen of byId("sides").querySelectorAll(".screen")) {
    screen.style.width = `${size.width * shown.zoom}px`;
    screen.style.height = `${size.height * shown.zoom}px`;
  }
}

const pictureParameters = (look, pressing) => [
  ...parametersOf(pressing), ["scale", String(shown.scale)],
  ...(look === "theme" ? [] : [["look", look]]), ["version", String(generation)]];

/** Shows a look's picture in `screen` unless a later one has been asked for meanwhile. */
async function showPicture(slot, look, screen, alt, pressing) {
  const mine = ++latest[slot];
  try {
    const image = await loadPicture(pictureParameters(look, pressing));
    if (mine !== latest[slot]) return;
    image.className = "picture";
    image.alt = alt;
    screen.querySelector("img.picture").replaceWith(image);
    first.classList.remove("waiting");
  } catch (error) {
    if (mine === latest[slot]) tell(error.message);
  }
}

const describe = () => `${view.device}, ${view.orientation}, ${view.style}`;

/** These keys are down, whatever is drawn next. */
export const setPressed = (down) => { pressed = down; };

export const isPressing = () => pressed.length > 0;

/** Asks for the picture of the theme alone: what a key that goes down needs. */
export function showPressed() {
  return showPicture("theme", "theme", first.querySelector(".screen"), `${names.theme}: ${describe()}`, pressed);
}

function showSecond(comparison) {
  second.hidden = !comparison || comparison.slider;
  curtain.hidden = divider.hidden = !comparison?.slider;
  if (!comparison) return null;
  const screen = comparison.slider ? curtain : second.querySelector(".screen");
  if (!screen.querySelector("img.picture")) screen.append(make("img", { class: "picture", alt: "" }));
  const alt = names[comparison.look];
  second.querySelector("figcaption").textContent = alt;
  const [left, right] = divider.querySelectorAll("span");
  [left.textContent, right.textContent] = [alt, names.theme];
  divider.querySelector("input").setAttribute("aria-label", `How much of: ${alt}`);
  return showPicture("second", comparison.look, screen, alt, []);
}

function showDivider() {
  const share = Number(divider.querySelector("input").value);
  curtain.style.clipPath = `inset(0 ${100 - share}% 0 0)`;
}
divider.querySelector("input").addEventListener("input", showDivider);
showDivider();

/** Asks for all pictures anew. */
export function showPictures() {
  const comparison = compared();
  const arranged = arrange();
  shown = arranged;
  byId("sides").classList.toggle("column", arranged.column);
  first.querySelector("figcaption").textContent = names.theme;
  first.querySelector("figcaption").hidden = !comparison || comparison.slider;
  resize();
  return Promise.all([showPressed(), showSecond(comparison)]);
}

const nameOf = (key) => (key.label && key.label !== key.name ? `${key.label}, ${key.name}` : key.name);

function place(button, [x, y, width, height]) {
  button.style.left = `${(100 * x) / size.width}%`;
  button.style.top = `${(100 * y) / size.height}%`;
  button.style.width = `${(100 * width) / size.width}%`;
  button.style.height = `${(100 * height) / size.height}%`;
}

function keyButton(key, index) {
  const button = make("button", {
    type: "button", class: "key", tabindex: index === 0 ? 0 : -1,
    "data-key": key.name, "data-display-type": key.displayType, "aria-label": nameOf(key),
    title: key.name });
  place(button, key.frame);
  return button;
}

function showMarks() {
  for (const button of keysGroup.children) {
    button.classList.toggle("marked", marked.has(button.dataset.key));
    button.classList.toggle("asked", button.dataset.key === view.key);
    button.setAttribute("aria-current", button.dataset.key === view.key ? "true" : "false");
  }
}

/** Marks the keys that have these names. */
export function mark(keyNames) {
  marked = new Set(keyNames);
  showMarks();
}

/** Marks the key that is asked about. */
export const showAsked = showMarks;

const donePanel = () =>
  make("button", { type: "button", class: "key panel", "data-key": "", "data-display-type": "Done",
    "aria-label": "Done: ends dictation" });

/** Learns which keys the view has, and lays them over the picture. */
async function learnKeys(asked) {
  const answer = await ask("keys.json", [...parametersOfKeyplane(), ["version", String(generation)]]);
  if (asked !== keysAsked) return false;
  const before = size;
  size = { width: answer.size[0] / answer.scale, height: answer.size[1] / answer.scale };
  keys = answer.keys;
  setKnown(keys.map((key) => key.name));
  const focused = document.activeElement?.dataset?.key;
  fill(keysGroup, ...(view.dictation === "yes" ? [donePanel()] : keys.map(keyButton)));
  const same = [...keysGroup.children].find((button) => button.dataset.key === focused);
  if (focused !== undefined) moveTo(same ?? keysGroup.firstChild);
  showMarks();
  return before.width !== size.width || before.height !== size.height;
}

let learning = Promise.resolve(false);

/** Lays the view's keys over the picture; whether the keyboard has another size than before. */
export function showKeys() {
  const asked = JSON.stringify(parametersOfKeyplane());
  if (asked === keysAsked) return learning;
  keysAsked = asked;
  // No key is drawn pressed before it is known to be there.
  setKnown([]);
  learning = learnKeys(asked).catch((error) => {
    keysAsked = "";
    throw error;
  });
  return learning;
}

/** Gives `button` the focus; Tab comes back to it. */
export function moveTo(button) {
  for (const other of keysGroup.children) other.tabIndex = other === button ? 0 : -1;
  button?.focus();
}

/** Calls `listener` when there is more or less room, or the screen's pixels are others. */
export function onRoom(listener) {
  let before = "";
  const look = () => {
    const now = JSON.stringify(arrange());
    if (now !== before) listener();
    before = now;
  };
  new ResizeObserver(look).observe(byId("sides"));
  onPixelRatio(listener);
}
