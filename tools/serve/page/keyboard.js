// Keys go down and up as on the device: with a mouse, a finger or the computer's own keyboard.

import { byId, tell } from "./dom.js";
import { allKeys, moveTo, setPressed, showPressed } from "./stage.js";
import { change, view } from "./view.js";

const group = byId("keys");
/** A key that is let go at once is still seen to go down. */
const kShortestPress_ms = 110;
/** Two taps on shift within this time lock it. */
const kDoubleTap_ms = 350;

/** Names of keys that are down, since when, and of those let go already how that is ended. */
const down = new Map();
let lastShift_ms = 0;
let shiftHeld = false;

const keyCalled = (name) => allKeys().find((key) => key.name === name);

function press(name) {
  down.get(name)?.finish?.();
  if (!name || down.has(name) || view.dictation === "yes") return;
  down.set(name, { since: performance.now() });
  setPressed([...down.keys()]);
  showPressed();
}

/** Lets a key go; `wasMeant`: it does then what it is there for. */
function release(name, wasMeant) {
  const held = down.get(name);
  if (!held || held.finish) return;
  let timer = 0;
  held.finish = () => {
    clearTimeout(timer);
    down.delete(name);
    setPressed([...down.keys()]);
    const key = keyCalled(name);
    if (!wasMeant || !key || !act(key)) showPressed();
  };
  timer = setTimeout(held.finish, Math.max(0, kShortestPress_ms - (performance.now() - held.since)));
}

function tapShift() {
  const now = performance.now();
  const isDouble = now - lastShift_ms < kDoubleTap_ms;
  lastShift_ms = now;
  if (isDouble && view.shift !== "locked") return { shift: "locked" };
  return { shift: view.shift === "off" ? "on" : "off" };
}

/** What each kind of key does; those that aren't here change nothing that can be seen. */
const deeds = {
  Shift: (key) => (key.label === "" ? tapShift()
    : { keyplane: key.label === "123" ? "numbers" : "numbers-alternate" }),
  More: () => ({ keyplane: view.keyplane === "small-letters" ? "numbers" : "small-letters" }),
  Dictation: () => ({ dictation: "yes" }),
  Letter: () => (view.shift === "on" && !shiftHeld ? { shift: "off" } : null),
  Dismiss: () => { tell("On a tablet this key puts the keyboard away."); },
};

/** Whether the key changed the view, which then is drawn anew. */
function act(key) {
  const changes = deeds[key.displayType]?.(key);
  if (!changes || view.disable.includes(key.name)) return false;
  change(changes);
  return true;
}

const keyOf = (event) => event.target.closest?.(".key");

group.addEventListener("pointerdown", (event) => {
  const button = keyOf(event);
  if (!button || event.button !== 0) return;
  moveTo(button);
  const { key } = button.dataset;
  press(key);
  const stop = (ended) => {
    if (ended.pointerId !== event.pointerId) return;
    window.removeEventListener("pointerup", stop);
    window.removeEventListener("pointercancel", stop);
    const over = document.elementFromPoint(ended.clientX, ended.clientY);
    release(key, ended.type === "pointerup" && over?.closest(".key")?.dataset.key === key);
  };
  window.addEventListener("pointerup", stop);
  window.addEventListener("pointercancel", stop);
});

group.addEventListener("click", (event) => {
  const button = keyOf(event);
  if (!button) return;
  if (button.dataset.displayType === "Done") change({ dictation: "no" });
  else change({ key: button.dataset.key });
});

// Moving among keys -------------------------------------------------------------------------------

const directions = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };

const middle = (element) => {
  const box = element.getBoundingClientRect();
  return [box.left + box.width / 2, box.top + box.height / 2];
};

/** The nearest key that lies in this direction; what lies aside counts more than what lies far. */
function neighbour(button, [dx, dy]) {
  const [x, y] = middle(button);
  let best = null;
  let least = Infinity;
  for (const other of group.children) {
    const [otherX, otherY] = middle(other);
    const along = (otherX - x) * dx + (otherY - y) * dy;
    const aside = Math.abs((otherX - x) * dy) + Math.abs((otherY - y) * dx);
    if (along <= 1 || (dx !== 0 && aside > along)) continue;
    const cost = along + 2 * aside;
    if (cost < least) [best, least] = [other, cost];
  }
  return best;
}

group.addEventListener("keydown", (event) => {
  const direction = directions[event.key];
  if (!direction || event.ctrlKey || event.metaKey || event.altKey) return;
  event.preventDefault();
  const next = neighbour(event.target, direction);
  if (next) moveTo(next);
});

// The computer's own keyboard ----------------------------------------------------------------------

const kinds = { Enter: "Return", Backspace: "Delete", " ": "Space" };
const isKeyboards = (target) =>
  target === document.body || group.contains(target) || target.id === "answer";

/** What a control does with a key itself is left to it. */
function isElsewhere({ target, key }) {
  if (isKeyboards(target)) return false;
  const takesLetters = target.closest('dialog, select, input:not([type="radio"], [type="checkbox"])');
  return takesLetters || key === " " || key.length > 1;
}

/** The key of the keyboard that stands for one of the computer's. */
function keyTyped(event) {
  const kind = kinds[event.key];
  if (kind) return allKeys().find((key) => key.displayType === kind);
  const typed = event.key.toLocaleLowerCase();
  return allKeys().find((key) => key.label.toLocaleLowerCase() === typed);
}

/** Enter and space press the key that has the focus. */
function keyMeant(event) {
  if ((event.key === "Enter" || event.key === " ") && group.contains(event.target)) {
    return keyCalled(event.target.dataset.key);
  }
  return keyTyped(event);
}

const held = new Map();

function holdShift(isDown) {
  if (view.keyplane !== "small-letters") return;
  if (isDown && view.shift === "off") {
    shiftHeld = true;
    change({ shift: "on" });
  } else if (!isDown && shiftHeld) {
    shiftHeld = false;
    change({ shift: "off" });
  }
}

window.addEventListener("keydown", (event) => {
  if (event.ctrlKey || event.metaKey || event.altKey || isElsewhere(event)) return;
  if (event.key === "Shift") return holdShift(true);
  if (event.key === "CapsLock") return change({ shift: event.getModifierState("CapsLock") ? "locked" : "off" });
  if (event.repeat || event.key.length > 1 && !kinds[event.key]) return undefined;
  const key = keyMeant(event);
  if (!key) return undefined;
  if (event.key === " " && event.target === document.body) event.preventDefault();
  held.set(event.code, key.name);
  press(key.name);
  return undefined;
});

window.addEventListener("keyup", (event) => {
  if (event.key === "Shift") holdShift(false);
  const name = held.get(event.code);
  if (name === undefined) return;
  held.delete(event.code);
  release(name, true);
});

window.addEventListener("blur", () => {
  held.clear();
  holdShift(false);
  for (const name of down.keys()) release(name, false);
});
