// The answer to "why does this key look so": what `prismal explain` says of it.

import { byId, fill, make } from "./dom.js";
import { ask } from "./server.js";
import { allKeys, mark, markLater, showAsked } from "./stage.js";
import { change, parametersOf, view } from "./view.js";

const body = byId("answer-body");
const title = byId("answer-title");
let latest = 0;

const swatch = (color) => {
  const element = make("span", { class: "swatch", "aria-hidden": "true" });
  element.style.setProperty("--color", color);
  return element;
};

const colors = (color) =>
  [color].flat().filter(Boolean).map((one) => make("span", { class: "color" }, swatch(one), one));

function valueText(value) {
  if (value === null) return "none";
  if (typeof value === "object") {
    const { name, startColor, endColor } = value;
    if (name) return name;
    return endColor && endColor !== startColor ? `${startColor} to ${endColor}` : `${startColor}`;
  }
  return typeof value === "boolean" ? (value ? "yes" : "no") : String(value);
}

/** Marks the keys that a rule hits while the pointer or the focus is on `element`. */
export function marksHits(element, list, rule) {
  const show = () => markLater(keysHit(list, rule));
  for (const event of ["pointerenter", "focusin"]) element.addEventListener(event, show);
  for (const event of ["pointerleave", "focusout"]) element.addEventListener(event, () => mark([]));
}

const placeOfView = () =>
  [["device", view.device], ["orientation", view.orientation], ["style", view.style],
    ["keyplane", view.keyplane === "small-letters" && view.shift !== "off" ? "capital-letters" : view.keyplane]];

/** The names of the keys of this view that a rule hits. */
export async function keysHit(list, rule) {
  const answer = await ask("rule.json", [...placeOfView(), ["visual-style", list], ["rule", String(rule)]]);
  return answer.keyplanes.flatMap((keyplane) => keyplane.keys.map((key) => key.name));
}

const texts = (key) =>
  make("dl", { class: "texts" }, ...Object.entries(key.texts).flatMap(([name, text]) =>
    [make("dt", {}, name), make("dd", {}, make("code", {}, text))]));

const from = (property) =>
  property.rule === null ? make("span", { class: "quiet" }, "the system")
    : make("a", { href: `#rule-${property.rule}`, class: "rule-link",
      click: (event) => {
        event.preventDefault();
        byId(`rule-${property.rule}`).focus();
      } }, `rule ${property.rule}`, property.line ? `, line ${property.line}` : "");

const properties = (list) =>
  make("table", {},
    make("thead", {}, make("tr", {}, ...["Property", "Value", "From"].map((name) => make("th", { scope: "col" }, name)))),
    make("tbody", {}, ...list.map((property) =>
      make("tr", {}, make("th", { scope: "row" }, property.property),
        make("td", {}, make("span", { class: "value" }, valueText(property.value)), ...colors(property.color)),
        make("td", {}, from(property))))));

function verdict(rule) {
  if (!rule.matches) {
    return make("p", { class: "verdict quiet" }, rule.failedTerm
      ? `Does not hold: ${rule.failedTerm} against ${rule.testedAgainst ?? "nothing"}`
      : rule.message ?? rule.reason ?? "Does not hold");
  }
  const lost = rule.lost.map(({ property, to }) => `${property} to rule ${to}`);
  return make("p", { class: "verdict" },
    rule.won.length > 0 ? make("span", { class: "won" }, `Won ${rule.won.join(", ")}. `) : null,
    lost.length > 0 ? make("span", { class: "lost" }, `Lost ${lost.join(", ")}.`) : null,
    rule.won.length + lost.length === 0 ? "Holds, and sets nothing." : null);
}

function ruleItem(rule, list) {
  const item = make("li", { id: `rule-${rule.rule}`, tabindex: 0, class: rule.matches ? "rule holds" : "rule" },
    make("p", { class: "condition" }, make("span", { class: "number" }, `${rule.rule}`),
      make("code", {}, rule.condition ?? "no condition"),
      make("span", { class: "quiet line" }, rule.line ? `line ${rule.line}` : "")),
    verdict(rule));
  marksHits(item, list, rule.rule);
  return item;
}

const backgrounds = (chain) =>
  make("ol", { class: "chain" }, ...chain.map((step) =>
    make("li", { class: step.hit ? "hit" : "" }, make("code", {}, step.key),
      make("span", { class: "quiet" }, step.hit ? ` ${step.path}` : step.path ? ` ${step.path}: no picture` : " none"))));

function states(name) {
  const now = view.disable.includes(name) ? "disabled" : view.press.includes(name) ? "pressed" : "normal";
  const without = (list) => list.filter((other) => other !== name);
  const choose = (state) => change({
    press: state === "pressed" ? [...without(view.press), name] : without(view.press),
    disable: state === "disabled" ? [...without(view.disable), name] : without(view.disable),
  });
  return make("fieldset", { class: "group states" }, make("legend", { class: "hidden" }, "State of the key"),
    make("div", { class: "segments" }, ...["normal", "pressed", "disabled"].map((state) =>
      make("label", {}, make("input", { type: "radio", name: "state", value: state, checked: state === now,
        change: () => choose(state) }), make("span", {}, state)))));
}

const part = (heading, ...content) => make("section", {}, make("h3", {}, heading), ...content);

function show(answer) {
  const { key } = answer;
  const list = answer.visualStyle;
  fill(body, states(key.name),
    part("What conditions can test", texts(key)),
    part("How it looks", properties(answer.properties)),
    part(`Rules of ${list}`, answer.rules.length > 0
      ? make("ol", { class: "rules", start: 0 }, ...answer.rules.map((rule) => ruleItem(rule, list)))
      : make("p", { class: "quiet" }, "The theme has none for this style.")),
    part("Picture behind the keys", backgrounds(answer.background)));
}

function showFocused(draw) {
  const { id, name, value } = document.activeElement ?? {};
  draw();
  if (name === "state") body.querySelector(`input[name="state"][value="${value}"]`)?.focus();
  else if (id?.startsWith("rule-")) byId(id)?.focus();
}

/** Asks about the key of the view anew, once it is known which keys there are. */
export async function showAnswer(keysAreKnown) {
  showAsked();
  if (!view.key || view.dictation === "yes") return;
  const mine = ++latest;
  const { key } = view;
  title.textContent = key;
  try {
    await keysAreKnown;
    if (mine !== latest) return;
    if (!allKeys().some(({ name }) => name === key)) {
      fill(body, make("p", {}, "The keyboard that is shown has no such key."));
      return;
    }
    const answer = await ask("explain.json", [...parametersOf(), ["key", key]]);
    if (mine === latest) showFocused(() => show(answer));
  } catch (error) {
    if (mine === latest) fill(body, make("p", {}, error.message));
  }
}
