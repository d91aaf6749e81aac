// The preview page in a real browser.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { readFile, readdir, rename, writeFile } from "node:fs/promises";
import { get } from "node:http";
import { after, afterEach, before, beforeEach, test } from "node:test";
import { colorOf, launch, open, serve, serveFolder, until } from "./browser.mjs";

const kSaves = Number(process.env.SAVES ?? 10);
const kG = "Latin-Small-Letter-G";

let browser;
let server;
let page;

before(async () => { browser = await launch(); });
after(() => browser.close());
beforeEach(async () => {
  server = await serve("Linen", "--compare", `${process.env.EXAMPLES}/Dusk.theme`);
  page = await open(browser, server);
});
afterEach(async () => {
  const { faults } = page;
  await page.context().close();
  assert.equal(await server.end(), 0);
  assert.deepEqual(faults, []);
});

const key = (name) => page.locator(`#keys [data-key="${name}"]`);
const labels = () => page.locator("#keys .key").evaluateAll((keys) => keys.map((one) => one.getAttribute("aria-label").split(",")[0]));
const hash = () => new URLSearchParams(new URL(page.url()).hash.slice(1));
const radio = (name, value) => page.locator(`input[name="${name}"][value="${value}"]`);

async function save(change) {
  const now = await readFile(server.list, "utf8");
  const next = change(now);
  assert.notEqual(next, now);
  await writeFile(`${server.list}~`, next);
  await rename(`${server.list}~`, server.list);
}

const paint = (color) => (list) =>
  list.replace(/(UIKBColorKeyLetter<\/string><string>)#[0-9A-F]{8}/, `$1${color}FF`);

test("shows the theme, its name and its keys", async () => {
  assert.equal(await page.title(), "Linen · Prismal");
  assert.equal((await labels()).length, 32);
  assert.equal(await colorOf(page, kG), "#fcf9f3");
});

test("every save is seen", async (context) => {
  const times = [];
  for (let i = 0; i < kSaves; ++i) {
    const color = `#${(0x102030 + i * 0x010305).toString(16).toUpperCase()}`;
    const start = performance.now();
    if (i % 2 === 0) await save(paint(color));
    else await writeFile(server.list, paint(color)(await readFile(server.list, "utf8")));
    assert.equal(await until(() => colorOf(page, kG), (now) => now === color.toLowerCase()), color.toLowerCase());
    times.push(performance.now() - start);
  }
  times.sort((one, other) => one - other);
  context.diagnostic(`save to pixels: median ${times[times.length >> 1].toFixed(0)} ms, most ${times.at(-1).toFixed(0)} ms, of ${kSaves}`);
});

test("a broken theme leaves the last picture and says where it is wrong", async () => {
  const good = await readFile(server.list, "utf8");
  await save((list) => list.replace("</array>", "</arry>"));
  const wrong = page.locator("#wrong");
  await wrong.waitFor({ state: "visible" });
  assert.match(await wrong.textContent(), /Line \d+, column \d+/);
  assert.doesNotMatch(await wrong.locator(".source").textContent(), /^\s/);
  await key(kG).click();
  await page.locator(`#keys .asked[data-key="${kG}"]`).waitFor();
  assert.equal(await until(() => colorOf(page, kG), (color) => color === "#fcf9f3"), "#fcf9f3");
  await save(() => paint("#336699")(good));
  await wrong.waitFor({ state: "hidden" });
  assert.equal(await until(() => colorOf(page, kG), (color) => color === "#336699"), "#336699");
});

test("keys go down and up, by mouse and by the computer's own", async () => {
  await key(kG).hover();
  await page.mouse.down();
  assert.equal(await until(() => colorOf(page, kG), (color) => color === "#c9baa1"), "#c9baa1");
  await page.mouse.up();
  assert.equal(await until(() => colorOf(page, kG), (color) => color === "#fcf9f3"), "#fcf9f3");
  await page.mouse.click(300, 790);
  await page.keyboard.down("k");
  const k = "Latin-Small-Letter-K";
  assert.equal(await until(() => colorOf(page, k), (color) => color === "#c9baa1"), "#c9baa1");
  await page.keyboard.up("k");
  assert.equal(await until(() => colorOf(page, k), (color) => color === "#fcf9f3"), "#fcf9f3");
});

test("shift, its lock, and the planes", async () => {
  await key("Shift-Key").click();
  assert.ok((await until(labels, (all) => all.includes("G"))).includes("G"));
  assert.equal(hash().get("shift"), "on");
  await key("Latin-Capital-Letter-G").click();
  assert.ok((await until(labels, (all) => all.includes("g"))).includes("g"));
  await key("Shift-Key").dblclick();
  await until(() => hash().get("shift"), (shift) => shift === "locked");
  assert.equal(hash().get("shift"), "locked");
  await key("More-Key").click();
  assert.ok((await until(labels, (all) => all.includes("7"))).includes("7"));
  await key("Shift-Key").click();
  assert.ok((await until(labels, (all) => all.includes("€"))).includes("€"));
  await key("More-Key").click();
  assert.ok((await until(labels, (all) => all.includes("q"))).includes("q"));
});

test("rotation, devices, dictation", async () => {
  const shape = () => page.locator("#first .screen > img.picture").evaluate((image) => image.naturalWidth / image.naturalHeight);
  await radio("orientation", "landscape").check({ force: true });
  assert.ok(Math.abs(await until(shape, (now) => now > 2.9) - 480 / 162) < 0.01);
  await radio("device", "tablet").check({ force: true });
  assert.ok(Math.abs(await until(shape, (now) => now < 2.93) - 1024 / 352) < 0.01);
  await page.locator('input[name="dictation-key"]').check();
  await key("Dictation-Key").waitFor();
  await key("Dictation-Key").click();
  await page.locator("#keys .panel").click();
  await key(kG).waitFor();
});

test("a key answers for its look, and a rule marks what it hits", async () => {
  await page.goto(`${server.address}#`);
  await key("Return-Key").click();
  const answer = page.locator("#answer");
  await answer.locator("tbody tr").first().waitFor();
  const text = await answer.textContent();
  assert.doesNotMatch(text, /undefined|null/);
  for (const piece of ["Return-Key", "DisplayType", "BackgroundGradient", "#9A4A32FF"]) assert.ok(text.includes(piece), piece);
});

test("rules win, lose and fail, and mark their keys", async () => {
  const dusk = await serve("Dusk");
  const other = await open(browser, dusk, "#key=Return-Key");
  try {
    const rules = other.locator("#answer .rule");
    await rules.first().waitFor();
    assert.match(await rules.nth(0).textContent(), /Lost BackgroundGradient to rule 2/);
    assert.match(await rules.nth(1).textContent(), /Does not hold: DisplayType=.* against Return/);
    await rules.nth(1).hover();
    const marked = other.locator("#keys .marked");
    await marked.first().waitFor();
    assert.deepEqual(await marked.evaluateAll((keys) => keys.map((one) => one.dataset.key)),
      ["Shift-Key", "Delete-Key", "More-Key", "International-Key"]);
    assert.deepEqual(other.faults, []);
  } finally {
    await other.context().close();
    assert.equal(await dusk.end(), 0);
  }
});

test("findings stand in a list, and choosing one shows its key", async () => {
  await save((list) => list.replace("</dict>\n</plist>", `<key>Styles</key><dict><key>iPhone-Standard</key>
    <array><array><string>KeyName=${kG}</string><dict><key>TextColour</key><string>Nobody</string></dict></array></array></dict></dict></plist>`));
  const finding = page.locator(".finding").first();
  await finding.waitFor();
  assert.match(await finding.textContent(), /TextColour.*TextColor/s);
  assert.match(await finding.locator(".source").textContent(), /<key>TextColour<\/key>/);
  await finding.click();
  await page.locator(`#keys .asked[data-key="${kG}"]`).waitFor();
  await page.locator("#keys .marked").first().waitFor();
});

const styled = (...conditions) => (list) => list.replace("</dict>\n</plist>", `<key>Styles</key><dict><key>iPhone-Standard</key><array>
  ${conditions.map((one) => `<array><string>${one}</string><dict><key>TextColour</key><string>Nobody</string></dict></array>`).join("\n")}
  </array></dict><key>BackgroundImages</key><dict><key>Landscape;iPhone-Alert;2</key><string>gone.png</string></dict></dict></plist>`);

test("a finding shows its keys wherever they are, and its place in the line", async () => {
  await radio("style", "alert").check({ force: true });
  await page.locator('input[name="international-key"]').uncheck();
  await save(styled("KeyName=Latin-Capital-Letter-G", "DisplayType=Dictation", "DisplayType=International"));
  const findings = page.locator(".finding");
  const about = (text) => findings.filter({ hasText: text });
  await findings.nth(3).waitFor();
  assert.equal(await about("Capital-Letter-G").locator("mark").textContent(), "<key>TextColour</key>");
  for (const [text, name] of [["Capital-Letter-G", "Latin-Capital-Letter-G"], ["=Dictation", "Dictation-Key"], ["=International", "International-Key"]]) {
    await about(text).click();
    await page.locator(`#keys .asked.marked[data-key="${name}"]`).waitFor();
  }
  await about("gone.png").first().click();
  for (const [name, value] of [["orientation", "landscape"], ["style", "alert"], ["keyplane", "numbers"]]) assert.equal(hash().get(name), value);
  await save((list) => list.replace("DisplayType=International", "DisplayType=Dictation"));
  await until(() => about("=International").count(), (count) => count === 0);
  assert.match(await page.evaluate(() => document.activeElement.textContent), /gone\.png/);
});

test("a broken theme to compare with is told, too", async () => {
  const dusk = await serve("Dusk");
  const linen = await serve("Linen", "--compare", dusk.theme);
  const other = await open(browser, linen);
  try {
    await other.waitForFunction(async () => (await (await fetch("theme.json")).json()).looks.find(({ look }) => look === "other").shown > 0);
    await writeFile(dusk.list, "<plist><dict>");
    await other.locator("#wrong .fault").waitFor();
    assert.match(await other.locator("#wrong").textContent(), /^Dusk, /);
    assert.match(await other.locator("#version").textContent(), /^Version \d+$/);
  } finally {
    await other.context().close();
    assert.equal(await linen.end(), 0);
    assert.equal(await dusk.end(), 0);
  }
});

test("the key at the same place is asked and focused when shift changes", async () => {
  await radio("keyplane", "capital-letters").check({ force: true });
  await key("Latin-Capital-Letter-G").click();
  await page.locator(`#keys .asked[data-key="${kG}"]`).waitFor();
  assert.equal(await page.evaluate(() => document.activeElement.dataset.key), kG);
  assert.equal(await until(() => page.locator("#answer-title").textContent(), (title) => title === kG), kG);
  await radio("keyplane", "capital-letters").check({ force: true });
  await page.locator('#keys [data-key="Shift-Key"][aria-pressed="true"]').waitFor();
  await radio("keyplane", "small-letters").check({ force: true });
  await key(kG).waitFor();
  assert.equal(hash().get("shift"), null);
});

test("letters that are typed reach the keyboard from a control that has no use for them", async () => {
  await radio("device", "phone-4").check({ force: true });
  await page.keyboard.down("k");
  assert.equal(await until(() => colorOf(page, "Latin-Small-Letter-K"), (color) => color === "#c9baa1"), "#c9baa1");
  await page.keyboard.up("k");
});

test("a second tap on a key and a second finger count", async () => {
  await key("More-Key").evaluate((more) => {
    const at = (type, pointerId, element = more) => {
      const box = element.getBoundingClientRect();
      const { x, y } = { x: box.x + box.width / 2, y: box.y + box.height / 2 };
      element.dispatchEvent(new PointerEvent(type, { bubbles: true, pointerId, clientX: x, clientY: y }));
    };
    for (let i = 0; i < 2; ++i) {
      at("pointerdown", 1);
      at("pointerup", 1);
    }
    const delete_ = document.querySelector('[data-key="Delete-Key"]');
    at("pointerdown", 2, delete_);
    at("pointerdown", 3, document.querySelector('[data-key="Return-Key"]'));
    at("pointerup", 3, document.querySelector('[data-key="Return-Key"]'));
  });
  const asked = () => page.locator("#first .screen > img.picture").getAttribute("src");
  const isRight = (address) => /press=Delete-Key/.test(address) && !/press=Return-Key|keyplane/.test(address);
  assert.ok(isRight(await until(asked, isRight)), await asked());
  assert.equal(hash().get("keyplane"), null);
});

test("a theme that is broken at first is shown once it is mended", async () => {
  const good = await readFile(server.list, "utf8");
  await writeFile(server.list, "<plist><dict>");
  const late = await serveFolder(server.theme);
  const context = await browser.newContext();
  const other = await context.newPage();
  const faults = [];
  other.on("pageerror", (error) => faults.push(error.message));
  try {
    await other.goto(late.address);
    await other.locator("#wrong .fault").waitFor();
    await writeFile(server.list, good);
    await other.locator("#wrong").waitFor({ state: "hidden" });
    await other.waitForFunction(() => document.querySelector("#first img").naturalWidth > 0);
    assert.equal((await until(() => other.locator("#keys .key").count(), (count) => count === 32)), 32);
    assert.equal(await until(() => other.title(), (title) => title.startsWith("Linen")), "Linen · Prismal");
    assert.deepEqual(faults, []);
  } finally {
    await context.close();
    assert.equal(await late.end(), 0);
  }
});

test("pixels of the picture are pixels of the screen", async () => {
  for (const [deviceScaleFactor, width] of [[1.1, 1164], [1.33, 1281], [0.9, 1422]]) {
    const other = await open(browser, server, "", { deviceScaleFactor, viewport: { width, height: 800 } });
    const { x, y } = await until(() => other.locator("#first .screen").evaluate((screen) => {
      const box = screen.getBoundingClientRect();
      return { x: box.x * devicePixelRatio, y: box.y * devicePixelRatio };
    }), (at) => Math.abs(at.x - Math.round(at.x)) < 0.03 && Math.abs(at.y - Math.round(at.y)) < 0.03);
    assert.ok(Math.abs(x - Math.round(x)) < 0.03 && Math.abs(y - Math.round(y)) < 0.03, `${deviceScaleFactor}: ${x}, ${y}`);
    await other.context().close();
  }
});

test("all of it can be reached by keyboard, with a visible focus", async () => {
  const seen = new Set();
  for (let i = 0; i < 60; ++i) {
    await page.keyboard.press("Tab");
    const where = await page.evaluate(() => {
      const element = document.activeElement;
      if (element === document.body) return null;
      const drawn = element.matches('input[type="radio"]') ? element.nextElementSibling : element;
      return { name: element.dataset.key ?? element.name ?? "", id: element.id, outline: getComputedStyle(drawn).outlineStyle };
    });
    if (!where) break;
    assert.notEqual(where.outline, "none", JSON.stringify(where));
    seen.add(where.id || where.name);
  }
  for (const name of ["copy", "download-sheet", "device", "keyplane", "compare", "Latin-Small-Letter-Q", "answer"]) assert.ok(seen.has(name), name);
  await key("Latin-Small-Letter-Q").focus();
  for (const arrow of ["ArrowRight", "ArrowDown", "Enter"]) await page.keyboard.press(arrow);
  assert.match(await until(() => page.locator("#answer-title").textContent(), (title) => title.startsWith("Latin")), /^Latin-Small-Letter-[SA]$/);
});

test("a link opens the same view again", async () => {
  const link = "#device=phone-4&orientation=landscape&style=alert&keyplane=numbers&compare=other-slider&key=Return-Key";
  const again = await open(browser, server, link);
  await again.locator("#answer tbody tr").first().waitFor();
  assert.ok(await again.locator('input[name="keyplane"][value="numbers"]').isChecked());
  assert.ok(await again.locator("#divider").isVisible());
  assert.equal(await again.locator("#answer-title").textContent(), "Return-Key");
  assert.equal(new URL(again.url()).hash, link);
  const senseless = await open(browser, server, "#device=watch&press=nothing&what=else");
  assert.ok(await senseless.locator('input[name="device"][value="phone-3.5"]').isChecked());
  await again.context().close();
  await senseless.context().close();
});

test("the settings act on the running keyboard", async () => {
  await page.locator("#use-prismal").uncheck();
  const plain = await until(() => colorOf(page, kG), (color) => color !== "#fcf9f3");
  assert.equal(plain, "#fdfdfe");
  await page.locator("#use-prismal").check();
  assert.equal(await until(() => colorOf(page, kG), (color) => color === "#fcf9f3"), "#fcf9f3");
  await page.locator("#open-pictures").click();
  await page.locator("#background-file").setInputFiles(`${process.env.EXAMPLES}/Dusk.theme/portrait.png`);
  await page.locator("#chosen li").waitFor();
  const gap = () => colorOf(page, "Latin-Small-Letter-Q", [0.02, 0.02]);
  assert.notEqual(await until(gap, (color) => color !== "#e2d8c8"), "#e2d8c8");
  await page.locator("#chosen button").click();
  assert.equal(await until(gap, (color) => color === "#e2d8c8"), "#e2d8c8");
});

test("what is on the screen is copied as a command", async () => {
  await page.context().grantPermissions(["clipboard-read", "clipboard-write"]);
  await radio("device", "phone-4").check({ force: true });
  await page.locator("#copy").click();
  await page.locator("#news.fresh").waitFor();
  assert.match(await page.evaluate(() => navigator.clipboard.readText()), /^prismal render .*Linen\.theme.*--device phone-4/);
});

/** The processes with a keyboard in them that the server has started, the theme's first. */
const hosts = (parent) => execFileSync("ps", ["-o", "pid=,comm=", "--ppid", String(parent)], { encoding: "utf8" })
  .split("\n").map((line) => line.trim().split(/\s+/)).filter(([, name]) => name === "prismal-host")
  .map(([pid]) => Number(pid));

test("keyboards' processes that are killed are told and replaced", async () => {
  const killed = hosts(server.process.pid);
  assert.ok(killed.length > 0);
  killed.forEach((pid) => process.kill(pid, "SIGKILL"));
  await page.locator("#news.fresh").waitFor();
  assert.match(await page.locator("#news").textContent(), /died \(killed by signal 9\)/);
  await save(paint("#224466"));
  assert.equal(await until(() => colorOf(page, kG), (color) => color === "#224466"), "#224466");
});

test("another host's name is refused", async () => {
  const ask = (headers) => new Promise((done, failed) => {
    get(`${server.address}theme.json`, { headers }, (response) => {
      response.resume();
      done(response.statusCode);
    }).on("error", failed);
  });
  assert.equal(await ask({}), 200);
  assert.equal(await ask({ host: "theme.example" }), 403);
  assert.equal(await ask({ origin: "http://theme.example" }), 403);
});

test("fits one screen, and narrow ones without scrolling sideways", async () => {
  for (const [width, height] of [[1280, 800], [900, 700], [400, 800]]) {
    await page.setViewportSize({ width, height });
    const overflow = await until(() => page.evaluate(() => {
      const root = document.documentElement;
      return [root.scrollWidth - innerWidth, innerWidth > 900 ? root.scrollHeight - innerHeight : 0];
    }), ([x, y]) => x <= 0 && y <= 0);
    assert.deepEqual(overflow, [0, 0], `${width} x ${height}`);
  }
});

test("pictures of the page", { skip: !process.env.PICTURES }, async () => {
  const folder = process.env.PICTURES;
  const dusk = await serve("Dusk", "--compare", `${process.env.EXAMPLES}/Linen.theme`);
  const shots = [
    ["serve", "#key=Return-Key", {}],
    ["serve-dark", "#device=phone-4&orientation=landscape&keyplane=numbers&key=More-Key&compare=system", { colorScheme: "dark" }],
    ["serve-narrow", `#device=phone-4&key=${kG}&press=${kG}`, { viewport: { width: 400, height: 860 } }],
  ];
  for (const [name, link, options] of shots) {
    const shot = await open(browser, dusk, link, options);
    await shot.locator("#answer tbody tr").first().waitFor();
    await shot.waitForTimeout(300);
    await shot.screenshot({ path: `${folder}/${name}.png` });
    await shot.context().close();
  }
  await dusk.end();
  assert.ok((await readdir(folder)).includes("serve.png"));
});
