// What `prismal check` finds, and the findings that keep themes from being shown.

import { keysHit } from "./answer.js";
import { byId, fill, make, tell } from "./dom.js";
import { ask } from "./server.js";
import { allKeys, mark, showKeys } from "./stage.js";
import { change, shownKeyplane, view } from "./view.js";

const wrong = byId("wrong");

const placeOf = ({ line, column, path }) =>
  (line ? `line ${line}${column ? `, column ${column}` : ""}` : path || "the theme");

/** Of a line with the place behind this column the server tells the part from `kBefore` before it. */
const kMostColumn = 100;
const kBefore = 60;

/** An element, a tag, a word or a character: what is marked from the place on. */
const kMarked = /^<(\w+)>[^<]*<\/\1>|^<[^>]*>|^[^\s<]+|^./u;

/** The source line without its indentation, marked at the place of the finding. */
function sourceOf({ source, column }) {
  if (!source) return null;
  const isPart = column > kMostColumn;
  const characters = [...source];
  const at = isPart ? kBefore : Math.max(0, (column || 1) - 1);
  const [before, behind] = [characters.slice(0, at).join(""), characters.slice(at).join("")];
  const [marked] = kMarked.exec(column ? behind : "") ?? [""];
  return make("code", { class: "source" }, isPart ? `…${before}` : before.trimStart(),
    marked ? make("mark", {}, marked) : null, behind.slice(marked.length));
}

/** Which rule of which style a finding is about, by its path. */
function ruleOf(path) {
  const found = /^Styles\.([^[.]+)\[(\d+)\]/.exec(path ?? "");
  return found ? { list: found[1], rule: Number(found[2]) } : null;
}

const keyplanes = ["capital-letters", "small-letters", "numbers", "numbers-alternate"];

/** The view behind whose keys a background stands that a finding is about, by its path. */
function viewOfBackground(path) {
  const found = /^BackgroundImages\.(Portrait|Landscape);(iPhone|iPad)-(\w+)(?:;([0-3]))?/.exec(path ?? "");
  if (!found) return null;
  const [, orientation, device, style, keyplane] = found;
  const devices = device === "iPhone" ? ["phone-3.5", "phone-4"]
    : style === "Split" ? ["tablet-split"] : ["tablet", "tablet-split"];
  return { orientation: orientation.toLowerCase(),
    device: devices.includes(view.device) ? view.device : devices[0],
    style: style === "Alert" ? "alert" : "standard",
    dictation: style === "Dictation" ? "yes" : "no",
    keyplane: keyplane ? keyplanes[keyplane] : shownKeyplane() };
}

/** What a keyplane of the server's answers is called in the choices. */
const choiceOf = (keyplane) => (/Alternate$/.test(keyplane) ? "numbers-alternate"
  : /Numbers/.test(keyplane) ? "numbers" : /Capital/.test(keyplane) ? "capital-letters" : "small-letters");

const optionOf = (name) =>
  (/^(Dictation|International)-Key$/.test(name) ? { [name.toLowerCase()]: "yes" } : {});

/** Shows a keyboard on which the rule hits keys, the most like the one that is shown. */
async function showElsewhere({ list, rule }, isLatest) {
  const answer = await ask("rule.json", [["visual-style", list], ["rule", String(rule)]]);
  if (!isLatest()) return undefined;
  const likeness = (place) => Number(choiceOf(place.keyplane) === shownKeyplane())
    + 2 * ["device", "orientation", "style"].filter((name) => place[name] === view[name]).length;
  const [place] = answer.keyplanes.sort((one, other) => likeness(other) - likeness(one));
  if (!place) return tell("This rule hits no key.");
  const names = place.keys.map((key) => key.name);
  change({ device: place.device, orientation: place.orientation, style: place.style, dictation: "no",
    keyplane: choiceOf(place.keyplane), ...optionOf(names[0]), key: names[0] });
  return mark(names);
}

let chosen = 0;

async function choose(finding, item) {
  chosen += 1;
  const mine = chosen;
  const isLatest = () => mine === chosen;
  byId("findings").querySelector("[aria-current]")?.removeAttribute("aria-current");
  item.setAttribute("aria-current", "true");
  mark([]);
  const background = viewOfBackground(finding.path);
  if (background) return change(background);
  const rule = ruleOf(finding.path);
  if (!rule) return undefined;
  const [hit] = await Promise.all([keysHit(rule.list, rule.rule).catch(() => []), showKeys()]);
  if (!isLatest()) return undefined;
  const name = hit.find((one) => allKeys().some((key) => key.name === one));
  if (name === undefined) return showElsewhere(rule, isLatest);
  change({ key: name });
  return mark(hit);
}

function itemOf(finding) {
  const item = make("button", { type: "button", class: `finding ${finding.severity}` },
    make("span", { class: "severity" }, finding.severity),
    make("span", { class: "place" }, placeOf(finding)),
    make("span", { class: "message" }, finding.message),
    make("span", { class: "quiet" }, finding.rule),
    sourceOf(finding));
  item.addEventListener("click", () => choose(finding, item).catch((error) => tell(error.message)));
  return make("li", {}, item);
}

const many = (count, what) => `${count} ${what}${count === 1 ? "" : "s"}`;

function countOf({ errors, warnings, trouble }) {
  if (trouble !== undefined) return `not known: ${trouble || "the check failed"}`;
  return [errors && many(errors, "error"), warnings && many(warnings, "warning")].filter(Boolean).join(", ") || "none";
}

/** The finding among `items` that says the same as `item` did, wherever it stands now. */
const sameOf = (items, item) => {
  const saidBy = (one) => one.querySelector(".finding .message")?.textContent;
  return items.find((one) => one.textContent === item.textContent) ?? items.find((one) => saidBy(one) === saidBy(item));
};

export function showFindings({ findings, ...event }) {
  const list = byId("findings");
  const before = [...list.children];
  const focused = before.find((item) => item.contains(document.activeElement));
  const current = before.find((item) => item.querySelector("[aria-current]"));
  const items = findings.map(itemOf);
  fill(byId("findings-title"), "Findings ", make("span", { class: "count" }, countOf(event)));
  fill(list, ...items);
  if (current) sameOf(items, current)?.firstChild.setAttribute("aria-current", "true");
  if (focused) (sameOf(items, focused) ?? items[before.indexOf(focused)] ?? items.at(-1))?.firstChild.focus();
}

/** What keeps the looks that can't be shown now from it. */
const faults = new Map();

function faultItem([look, { name, shown, finding }]) {
  const place = finding.line ? placeOf(finding) : "not shown";
  return make("div", { class: "fault" },
    make("strong", {}, look === "theme" ? place[0].toUpperCase() + place.slice(1) : `${name}, ${place}`),
    ` ${finding.message}`, sourceOf(finding),
    make("span", { class: "quiet" }, shown > 0 ? "The keyboard is the last one that could be read."
      : "There has been none that could be read."));
}

/** Tells what keeps a look's version from being shown; a `finding` of null: nothing does. */
export function showWrong(look, fault) {
  if (fault.finding) faults.set(look, fault);
  else faults.delete(look);
  wrong.hidden = faults.size === 0;
  fill(wrong, ...[...faults].map(faultItem));
}
