// What `prismal check` finds, and the finding that keeps a theme from being shown.

import { keysHit } from "./answer.js";
import { byId, fill, make, tell } from "./dom.js";
import { ask } from "./server.js";
import { mark } from "./stage.js";
import { change } from "./view.js";

const wrong = byId("wrong");

const placeOf = ({ line, column, path }) =>
  (line ? `line ${line}${column ? `, column ${column}` : ""}` : path || "the theme");

/** Which rule of which style a finding is about, by its path. */
function ruleOf(path) {
  const found = /^Styles\.([^[.]+)\[(\d+)\]/.exec(path ?? "");
  return found ? { list: found[1], rule: Number(found[2]) } : null;
}

/** Shows a keyboard on which the rule hits keys. */
async function showElsewhere({ list, rule }) {
  const { keyplanes } = await ask("rule.json", [["visual-style", list], ["rule", String(rule)]]);
  const place = keyplanes[0];
  if (!place) return tell("This rule hits no key.");
  const planes = ["numbers-alternate", "numbers", "capital-letters"];
  const named = { "numbers-alternate": /Alternate$/, numbers: /Numbers/, "capital-letters": /Capital/ };
  change({ device: place.device, orientation: place.orientation, style: place.style, shift: "off",
    keyplane: planes.find((plane) => named[plane].test(place.keyplane)) ?? "small-letters",
    key: place.keys[0].name });
  return mark(place.keys.map((key) => key.name));
}

async function choose(finding, item) {
  byId("findings").querySelector("[aria-current]")?.removeAttribute("aria-current");
  item.setAttribute("aria-current", "true");
  const rule = ruleOf(finding.path);
  if (!rule) return mark([]);
  const names = await keysHit(rule.list, rule.rule).catch(() => []);
  if (names.length === 0) return showElsewhere(rule);
  change({ key: names[0] });
  return mark(names);
}

function itemOf(finding) {
  const item = make("button", { type: "button", class: `finding ${finding.severity}` },
    make("span", { class: "severity" }, finding.severity),
    make("span", { class: "place" }, placeOf(finding)),
    make("span", { class: "message" }, finding.message),
    make("span", { class: "quiet" }, finding.rule),
    finding.source ? make("code", { class: "source" }, finding.source) : null);
  item.addEventListener("click", () => choose(finding, item).catch((error) => tell(error.message)));
  return make("li", {}, item);
}

const many = (count, what) => `${count} ${what}${count === 1 ? "" : "s"}`;

export function showFindings({ findings, errors, warnings }) {
  const count = errors + warnings === 0 ? "none" : [errors && many(errors, "error"),
    warnings && many(warnings, "warning")].filter(Boolean).join(", ");
  fill(byId("findings-title"), "Findings ", make("span", { class: "count" }, count));
  fill(byId("findings"), ...findings.map(itemOf));
}

/** Lays what keeps a version from being shown over the picture of the last good one. */
export function showWrong(finding) {
  wrong.hidden = !finding;
  if (!finding) return fill(wrong);
  return fill(wrong, make("strong", {}, finding.line ? `Line ${finding.line}` : "Not shown"), ` ${finding.message}`,
    finding.source ? make("code", { class: "source" }, finding.source) : null,
    make("span", { class: "quiet" }, "The keyboard is the last one that could be read."));
}
