// What is shown: the words of the command line's options. It stands in the address, behind the #, so
// that a link opens the same view again.

const defaults = {
  device: "phone-3.5",
  orientation: "portrait",
  style: "standard",
  keyplane: "small-letters",
  shift: "off",
  dictation: "no",
  "dictation-key": "no",
  "international-key": "yes",
  compare: "none",
  key: "",
  press: [],
  disable: [],
};

/** Words that a member may have; texts and lists of texts have none. Completed by the server. */
export const words = {
  shift: ["off", "on", "locked"],
  compare: ["none", "system", "system-slider", "other", "other-slider"],
};

export const view = structuredClone(defaults);
const listeners = [];

/** Calls `listener` with the names of the members that have changed. */
export const onChange = (listener) => listeners.push(listener);

const isSame = (one, other) => JSON.stringify(one) === JSON.stringify(other);

/** One thing can't be had with another, on this page as on the command line. */
function agree(changes) {
  // Capital letters are what shift shows.
  if (changes.keyplane === "capital-letters") {
    const shift = changes.shift ?? view.shift;
    return { ...changes, keyplane: "small-letters", shift: shift === "off" ? "on" : shift };
  }
  const isSmall = changes.keyplane === "small-letters";
  if (changes.keyplane && !(isSmall && changes.shift)) return { ...changes, shift: "off" };
  if (changes.shift && changes.shift !== "off") return { ...changes, keyplane: "small-letters" };
  return changes;
}

function assign(changes) {
  const changed = [];
  for (const [name, value] of Object.entries(changes)) {
    if (isSame(view[name], value)) continue;
    view[name] = value;
    changed.push(name);
  }
  return changed;
}

function told(changed) {
  if (changed.length > 0) listeners.forEach((listener) => listener(new Set(changed)));
}

export function change(changes) {
  const changed = assign(agree(changes));
  if (changed.length > 0) history.replaceState(null, "", addressOfView());
  told(changed);
}

function addressOfView() {
  const parameters = new URLSearchParams();
  for (const [name, value] of Object.entries(view)) {
    if (isSame(value, defaults[name])) continue;
    [value].flat().forEach((item) => parameters.append(name, item));
  }
  return parameters.size > 0 ? `#${parameters}` : location.pathname;
}

/** Reads the address; what it can't mean is as if it weren't there. */
export function readAddress() {
  const parameters = new URLSearchParams(location.hash.slice(1));
  const read = structuredClone(defaults);
  for (const [name, value] of parameters) {
    if (!(name in defaults)) continue;
    if (Array.isArray(defaults[name])) read[name].push(value);
    else if (!words[name] || words[name].includes(value)) read[name] = value;
  }
  told(assign(agree(read)));
}

/** The names of the keys that the shown keyplane has. */
let known = new Set();
export const setKnown = (names) => { known = new Set(names); };

/** The parameters of the server for the keyboard of this view, with no key pressed or disabled. */
export function parametersOfKeyplane() {
  const parameters = [];
  for (const name of ["device", "orientation", "style", "dictation-key", "international-key"]) {
    if (view[name] !== defaults[name]) parameters.push([name, view[name]]);
  }
  if (view.keyplane !== "small-letters") parameters.push(["keyplane", view.keyplane]);
  if (view.shift !== "off") parameters.push(["shift", view.shift]);
  if (view.dictation === "yes") parameters.push(["dictation", "yes"]);
  return parameters;
}

/**
 * The parameters of the server for this view, with keys pressed beside those of the view. Keys that
 * another keyplane has wait until it is shown again.
 */
export function parametersOf(pressed = []) {
  const parameters = parametersOfKeyplane();
  if (view.dictation === "yes") return parameters;
  const add = (name, keys) => {
    for (const key of new Set(keys)) if (known.has(key)) parameters.push([name, key]);
  };
  add("press", [...view.press, ...pressed]);
  add("disable", view.disable);
  return parameters;
}

/** Which keyplane the choices show as chosen. */
export const shownKeyplane = () =>
  view.keyplane === "small-letters" && view.shift !== "off" ? "capital-letters" : view.keyplane;

/** The look beside the theme's, and whether a slider lies between them. */
export function compared() {
  if (view.compare === "none") return null;
  const [look, slider] = view.compare.split("-");
  return { look, slider: slider === "slider" };
}
