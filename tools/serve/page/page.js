// Follows the server and joins the parts of the page.

import { showAnswer } from "./answer.js";
import { makeControls } from "./controls.js";
import { byId, tell } from "./dom.js";
import { showFindings, showWrong } from "./findings.js";
import { setScales } from "./fit.js";
import "./keyboard.js";
import { makeSettings, showOwnPictures, showSettings } from "./pictures.js";
import { addressOf, ask } from "./server.js";
import { isPressing, onRoom, nameOf, outdate, setNames, showKeys, showPictures } from "./stage.js";
import { compared, onChange, parametersOf, readAddress, view, words } from "./view.js";

let themeName = "";

function showLinks() {
  const parameters = parametersOf();
  const ofBoard = parameters.filter(([name]) => !["press", "disable", "shift", "dictation"].includes(name));
  const picture = byId("download-picture");
  picture.href = addressOf("picture.png", [...parameters, ["scale", "2"]]);
  picture.download = `${themeName}.png`;
  const sheet = byId("download-sheet");
  sheet.href = addressOf("sheet.png", ofBoard.filter(([name]) => name.endsWith("-key")));
  sheet.download = `${themeName}-sheet.png`;
}

/** Draws the view; once more when its keys tell that the keyboard has another size than thought. */
async function showView() {
  const keys = showKeys();
  // Which keys can be pressed is known only then.
  const mustWait = view.press.length + view.disable.length > 0 || isPressing();
  try {
    if (mustWait) await keys;
    showLinks();
    const pictures = showPictures();
    // A key that went down meanwhile isn't in the picture yet.
    if (await keys || isPressing()) await showPictures();
    await pictures;
  } catch (error) {
    tell(error.message);
  }
}

async function copyCommand() {
  const comparison = compared();
  const beside = comparison ? [["beside", comparison.look]] : [];
  const { command } = await ask("command", [...parametersOf(), ["scale", "2"], ...beside]);
  try {
    await navigator.clipboard.writeText(command);
    tell(`Copied: ${command}`);
  } catch {
    tell(command);
  }
}

async function learnTheme() {
  const theme = await ask("theme.json");
  const own = theme.looks.find(({ look }) => look === "theme");
  themeName = own.name ?? "Prismal";
  byId("name").textContent = themeName;
  setNames(themeName, theme.looks.find(({ look }) => look === "other")?.name);
  document.title = `${themeName} · Prismal`;
  showOwnPictures(own.pictures);
  return theme;
}

function showVersion({ look, version, shown, ok, finding }) {
  if (look === "theme") {
    byId("version").textContent = ok ? `Version ${version}` : `Version ${version} can’t be shown`;
    byId("version").classList.toggle("bad", !ok);
  }
  showWrong(look, { name: nameOf(look), shown, finding: ok ? null : finding });
  if (shown === 0) return;
  outdate();
  showView();
  if (look !== "theme" || !ok) return;
  showAnswer(showKeys());
  learnTheme().then(showLinks);
}

const heard = {
  version: showVersion,
  findings: (event) => event.look === "theme" && showFindings(event),
  host: ({ how }) => tell(`The keyboard’s process has died (${how}) and is replaced.`),
  settings: (settings) => {
    showSettings(settings);
    outdate();
    showView();
    showAnswer(showKeys());
  },
};

function follow() {
  const events = new EventSource("events");
  for (const [name, listener] of Object.entries(heard)) {
    events.addEventListener(name, ({ data }) => listener(JSON.parse(data)));
  }
  events.addEventListener("error", () => {
    byId("version").textContent = "The server doesn’t answer";
    byId("version").classList.add("bad");
  });
}

const theme = await learnTheme();
for (const name of ["device", "orientation", "style", "keyplane"]) words[name] = theme.choices[name];
for (const name of ["dictation", "dictation-key", "international-key"]) words[name] = ["no", "yes"];
const hasOther = theme.looks.some(({ look }) => look === "other");
if (!hasOther) words.compare = words.compare.filter((word) => !word.startsWith("other"));
setScales(theme.choices.scale);
readAddress();
makeControls(hasOther);
makeSettings(theme.choices);
onChange((changed) => {
  const shown = changed.size === 1 && changed.has("key") ? Promise.resolve() : showView();
  if (changed.size > 1 || !changed.has("compare")) showAnswer(showKeys());
  return shown;
});
onRoom(showView);
byId("copy").addEventListener("click", () => copyCommand().catch((error) => tell(error.message)));
window.addEventListener("hashchange", readAddress);
follow();
if (view.key) showAnswer(showKeys());
