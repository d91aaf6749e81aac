// The user's settings: whether themes are on, and pictures of their own.

import { byId, fill, make, tell } from "./dom.js";
import { post } from "./server.js";

const dialog = byId("pictures");
const wrong = byId("pictures-wrong");
const option = (value, text = value) => make("option", { value }, text);
/** How a device is held that shows a picture of each orientation. */
const held = { portrait: "Upright", landscape: "Sideways" };
const place = () => [["background-style", byId("background-style").value],
  ["orientation", byId("background-orientation").value]];

/** Changes a setting; what the server refuses is said in the dialog, or in passing. */
async function set(path, parameters, body) {
  try {
    wrong.textContent = "";
    showSettings(await post(path, parameters, body));
  } catch (error) {
    if (dialog.open) wrong.textContent = error.message;
    else tell(error.message);
  }
}

function chosenItem(style, orientation, name) {
  const word = orientation.toLowerCase();
  return make("li", {}, `${style}, ${held[word].toLowerCase()}: ${name || "a file of yours"} `,
    make("button", { type: "button", click: () =>
      set("settings/picture", [["background-style", style], ["orientation", word], ["remove", "yes"]]) },
    "Remove"));
}

export function showSettings({ usePrismal, pictures }) {
  byId("use-prismal").checked = usePrismal;
  const items = Object.entries(pictures).flatMap(([style, chosen]) =>
    Object.entries(chosen).map(([orientation, name]) => chosenItem(style, orientation, name)));
  fill(byId("chosen"), ...items);
}

/** `names`: none of a theme that can’t be read yet. */
export function showOwnPictures(names = []) {
  fill(byId("background-picture"), ...names.map((name, index) => option(String(index), name)));
  byId("use-picture").disabled = names.length === 0;
}

export function makeSettings(choices) {
  fill(byId("background-style"), ...choices["background-style"].map((style) => option(style)));
  fill(byId("background-orientation"), ...Object.entries(held).map(([word, text]) => option(word, text)));
  byId("use-prismal").addEventListener("change", ({ target }) =>
    set("settings", [["use-prismal", target.checked ? "yes" : "no"]]));
  byId("open-pictures").addEventListener("click", () => dialog.showModal());
  byId("close-pictures").addEventListener("click", () => dialog.close());
  byId("use-picture").addEventListener("click", () =>
    set("settings/picture", [...place(), ["picture", byId("background-picture").value]]));
  byId("background-file").addEventListener("change", async ({ target }) => {
    const [file] = target.files;
    if (file) await set("settings/picture", place(), file);
    target.value = "";
  });
}
