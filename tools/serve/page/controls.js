// The choices of a view, made from the words that the server knows.

import { byId, fill, make } from "./dom.js";
import { change, onChange, shownKeyplane, view, words } from "./view.js";

const titles = {
  device: "Device",
  orientation: "Held",
  style: "Style",
  keyplane: "Keyplane",
  shift: "Shift",
};

const labels = {
  "phone-3.5": "3.5″ phone",
  "phone-4": "4″ phone",
  tablet: "Tablet",
  "tablet-split": "Split",
  portrait: "Upright",
  landscape: "Sideways",
  standard: "Standard",
  alert: "Alert",
  "small-letters": "abc",
  "capital-letters": "ABC",
  numbers: "123",
  "numbers-alternate": "#+=",
  off: "Off",
  on: "On",
  locked: "Locked",
};

const spoken = {
  "small-letters": "small letters",
  "capital-letters": "capital letters",
  numbers: "numbers and punctuation",
  "numbers-alternate": "more punctuation",
};

const radio = (name, word) =>
  make("label", {},
    make("input", { type: "radio", name, value: word, "aria-label": spoken[word] ?? false,
      change: () => change({ [name]: word }) }),
    make("span", {}, labels[word] ?? word));

const group = (name) =>
  make("fieldset", { class: "group", "data-name": name }, make("legend", {}, titles[name]),
    make("div", { class: "segments" }, ...words[name].map((word) => radio(name, word))));

const check = (name, title) =>
  make("label", { class: "check" },
    make("input", { type: "checkbox", name,
      change: ({ target }) => change({ [name]: target.checked ? "yes" : "no" }) }), title);

function comparisons(hasOther) {
  const options = [["none", "Nothing"], ["system", "System, beside"], ["system-slider", "System, slider"]];
  if (hasOther) options.push(["other", "Other theme, beside"], ["other-slider", "Other theme, slider"]);
  return make("label", { class: "compare" }, "Compare with",
    make("select", { name: "compare", change: ({ target }) => change({ compare: target.value }) },
      ...options.map(([word, title]) => make("option", { value: word }, title))));
}

function showView() {
  const chosen = { ...view, keyplane: shownKeyplane() };
  for (const input of byId("controls").querySelectorAll("input, select")) {
    if (input.type === "radio") input.checked = chosen[input.name] === input.value;
    else if (input.type === "checkbox") input.checked = chosen[input.name] === "yes";
    else input.value = chosen[input.name];
  }
  const shift = byId("controls").querySelector('[data-name="shift"]');
  shift.disabled = view.keyplane !== "small-letters" || view.dictation === "yes";
}

/** Makes the choices. `hasOther`: a second theme is there to compare with. */
export function makeControls(hasOther) {
  fill(byId("controls"), ...Object.keys(titles).map(group),
    make("div", { class: "group checks" },
      check("dictation-key", "Dictation key"), check("international-key", "International key"),
      check("dictation", "Dictating")),
    comparisons(hasOther));
  onChange(showView);
  showView();
}
