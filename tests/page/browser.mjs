// A browser, a server and a theme for a test: `prismal serve` on a free port follows a copy of an
// example theme, and Debian's Chromium shows its page.

import { spawn } from "node:child_process";
import { once } from "node:events";
import { cp, mkdtemp, rm } from "node:fs/promises";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { createInterface } from "node:readline";
import { chromium } from "playwright-core";

const prismal = process.env.PRISMAL;
const examples = process.env.EXAMPLES;

/** Serves a theme until `end`. */
export async function serveFolder(theme, ...more) {
  const child = spawn(prismal, ["serve", theme, "--port", "0", ...more], { stdio: ["ignore", "pipe", "inherit"] });
  const exit = once(child, "exit");
  const lines = createInterface({ input: child.stdout });
  const [address] = await Promise.race([once(lines, "line"), exit.then(() => [undefined])]);
  if (!address) throw new Error("the server ended before it told its address");
  return {
    address, theme, list: join(theme, "theme.plist"), process: child,
    async end() {
      child.kill("SIGINT");
      const [status] = await exit;
      return status;
    },
  };
}

/** Serves a copy of an example theme, beside another when one is named, until `end`. */
export async function serve(example, ...more) {
  const folder = await mkdtemp(join(tmpdir(), "prismal-page-"));
  const theme = join(folder, `${example}.theme`);
  await cp(join(examples, `${example}.theme`), theme, { recursive: true });
  const server = await serveFolder(theme, ...more);
  return {
    ...server,
    async end() {
      const status = await server.end();
      await rm(folder, { recursive: true });
      return status;
    },
  };
}

export const launch = () => chromium.launch({
  executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
  args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
    "--disable-background-networking", "--disable-component-update", "--disable-sync"],
});

/** Opens the page and waits until its keyboard is there. What the page logs as an error throws. */
export async function open(browser, server, hash = "", options = {}) {
  const context = await browser.newContext({ viewport: { width: 1280, height: 800 }, ...options });
  const page = await context.newPage();
  page.faults = [];
  page.on("pageerror", (error) => page.faults.push(error.message));
  page.on("console", (message) => {
    if (message.type() === "error") page.faults.push(message.text());
  });
  await page.goto(`${server.address}${hash}`);
  await page.waitForFunction(() => document.querySelector("#first img")?.complete
    && document.querySelector("#first img").naturalWidth > 0 && document.querySelector("#keys").children.length > 0);
  return page;
}

/** The colour, as "#rrggbb", of the keyboard's picture at a point of a key's frame (shares of it). */
export const colorOf = (page, key, at = [0.22, 0.8]) => page.evaluate(([name, [x, y]]) => {
  const image = document.querySelector("#first .screen > img.picture");
  const button = document.querySelector(`#keys [data-key="${name}"]`);
  const canvas = new OffscreenCanvas(image.naturalWidth, image.naturalHeight);
  const context = canvas.getContext("2d");
  context.drawImage(image, 0, 0);
  const box = button.getBoundingClientRect();
  const all = image.getBoundingClientRect();
  const scale = image.naturalWidth / all.width;
  const [r, g, b] = context.getImageData((box.left - all.left + x * box.width) * scale,
    (box.top - all.top + y * box.height) * scale, 1, 1).data;
  return `#${[r, g, b].map((part) => part.toString(16).padStart(2, "0")).join("")}`;
}, [key, at]);

/** Asks `look` until its answer fits, as a person would look at the screen; the last answer else. */
export async function until(look, fits, most_ms = 8000) {
  const end = Date.now() + most_ms;
  for (;;) {
    const answer = await look();
    if (fits(answer) || Date.now() > end) return answer;
    await new Promise((done) => setTimeout(done, 5));
  }
}
