// The pictures of the keyboard, and the keys that lie over them as buttons.

import { byId, fill, make, tell } from "./dom.js";
import { fit, onPixelRatio } from "./fit.js";
import { ask, loadPicture } from "./server.js";
import { change, compared, parametersOf, parametersOfKeyplane, setKnown, view } from "./view.js";

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
let markings = 0;
let keysAsked = "";
/** What the looks are called. */
let names = { theme: "", other: "", system: "The system’s own look" };
const latest = { theme: 0, second: 0 };

export const allKeys = () => keys;
export const outdate = () => { generation += 1; };
export const setNames = (theme, other) => { names = { ...names, theme, other }; };
export const nameOf = (look) => names[look];

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

/** Moves the pictures onto whole pixels of the screen, whose pixels theirs then are. */
function align() {
  const ratio = window.devicePixelRatio || 1;
  const toWhole = (at) => `${Math.round(at * ratio) / ratio - at}px`;
  for (const screen of byId("sides").querySelectorAll(".screen")) {
    screen.style.left = screen.style.top = "0";
    const { x, y } = screen.getBoundingClientRect();
    screen.style.left = toWhole(x + window.scrollX);
    screen.style.top = toWhole(y + window.scrollY);
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

const describe = () => (view.dictation === "yes" ? [view.device, view.orientation, view.style, "dictation"]
  : [view.device, view.orientation, view.style, view.keyplane, `shift ${view.shift}`]).join(", ");

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
  const pictures = Promise.all([showPressed(), showSecond(comparison)]);
  align();
  return pictures;
}

const labelOf = (key) => (key.label && key.label !== key.name ? `${key.label}, ${key.name}` : key.name);

function place(button, [x, y, width, height]) {
  button.style.left = `${(100 * x) / size.width}%`;
  button.style.top = `${(100 * y) / size.height}%`;
  button.style.width = `${(100 * width) / size.width}%`;
  button.style.height = `${(100 * height) / size.height}%`;
}

/** A shift says whether it is on; the keys at its place on other keyplanes are no switches. */
const isOn = (key) => (key.displayType === "Shift" && key.label === "" ? String(view.shift !== "off") : false);

function keyButton(key, index) {
  const button = make("button", {
    type: "button", class: "key", tabindex: index === 0 ? 0 : -1,
    "data-key": key.name, "data-display-type": key.displayType, "aria-label": labelOf(key), "aria-pressed": isOn(key),
    title: key.name });
  place(button, key.frame);
  return button;
}

function showMarks() {
  for (const button of keysGroup.children) {
    const { key } = button.dataset;
    const isAsked = key !== "" && key === view.key;
    button.classList.toggle("marked", marked.has(key));
    button.classList.toggle("asked", isAsked);
    button.setAttribute("aria-current", String(isAsked));
  }
}

/** Marks the keys that have these names. */
export function mark(keyNames) {
  markings += 1;
  marked = new Set(keyNames);
  showMarks();
}

/** Marks the keys that `asking` will name, unless others are marked meanwhile. */
export async function markLater(asking) {
  markings += 1;
  const mine = markings;
  const keyNames = await asking.catch(() => []);
  if (mine === markings) mark(keyNames);
}

/** Marks the key that is asked about. */
export const showAsked = showMarks;

const donePanel = () =>
  make("button", { type: "button", class: "key panel", "data-key": "", "data-display-type": "Done",
    "aria-label": "Done: ends dictation" });

/** What the key of a name among `before` is called now: the same, or what has taken its place. */
function heir(before, name) {
  const frameOf = (key) => JSON.stringify(key.frame);
  const old = before.find((key) => key.name === name);
  if (!old || keys.some((key) => key.name === name)) return name;
  return keys.find((key) => frameOf(key) === frameOf(old))?.name ?? name;
}

/** Learns which keys the view has, and lays them over the picture. */
async function learnKeys(asked) {
  const answer = await ask("keys.json", [...parametersOfKeyplane(), ["version", String(generation)]]);
  if (asked !== keysAsked) return false;
  const before = size;
  const keysBefore = keys;
  size = { width: answer.size[0] / answer.scale, height: answer.size[1] / answer.scale };
  keys = answer.keys;
  setKnown(keys.map((key) => key.name));
  const focused = document.activeElement?.dataset?.key;
  fill(keysGroup, ...(view.dictation === "yes" ? [donePanel()] : keys.map(keyButton)));
  const focusedNow = heir(keysBefore, focused);
  const same = [...keysGroup.children].find((button) => button.dataset.key === focusedNow);
  if (focused !== undefined) moveTo(same ?? keysGroup.firstChild);
  change({ key: heir(keysBefore, view.key) });
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
    else align();
    before = now;
  };
  new ResizeObserver(look).observe(byId("sides"));
  onPixelRatio(listener);
}
