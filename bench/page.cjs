// Times of the page of mxtool serve in Chromium: the first view from the start of the program, a change of a value in a
// station of 64 modules until it is painted, and both while 50 pages are open on one server.
//
// Usage: node page.cjs PROJECT MXTOOL EXAMPLE_MODULES OUTPUT_FOLDER
//
// scripts/bench page calls it with a release. A change is timed in the browser, from the event of the field to the second
// frame after the bytes of the answer are in the document.

"use strict";

const fs = require("fs");
const os = require("os");
const path = require("path");
const settings = require("../tests/workbench/harness/settings.cjs");

const firstViews = 7;
const changes = 100;
const pagesAtOnce = 50;
const row = "stations/row-of-64.yaml";
const drawn = ".entry-card .entry-bytes";
const image = "[aria-label=\"Parameter image\"] [data-byte] > span:first-child";

function quantile(times, part) {
  const sorted = [...times].sort((a, b) => a - b);
  return sorted[Math.min(sorted.length - 1, Math.ceil(part * sorted.length) - 1)];
}

function print(name, times) {
  const shown = [0.5, 0.95, 1].map((part) => quantile(times, part).toFixed(0).padStart(7));
  console.log(`${name.padEnd(58)} ${shown.join(" ")}  (${times.length})`);
}

async function opened(browser, server) {
  const context = await browser.createBrowserContext();
  const page = await context.newPage();
  await page.goto(server.address, { waitUntil: "domcontentloaded" });
  await page.waitForSelector(drawn, { timeout: 60_000 });
  return { page, close: () => context.close() };
}

async function timeFirstView(browser, folder, file) {
  const { Server } = require("../tests/workbench/harness/programs.cjs");
  const began = performance.now();
  const server = await Server.start(folder, [file, "--folder", "."]);
  const { close } = await opened(browser, server);
  const took = performance.now() - began;
  await close();
  await server.end();
  return took;
}

/** Selects an entry of a module with the parameter "Upper limit", of which it returns the field. */
async function fieldOf(page) {
  await page.evaluate(() => [...document.querySelectorAll(".entry-card")]
    .find((one) => one.textContent.includes("4 AI ±10 V / 0-20 mA")).click());
  await page.waitForSelector("[data-parameter=\"21\"] input", { timeout: 60_000 });
  return "[data-parameter=\"21\"] input";
}

/** Runs in the page. */
async function timeChangeThere(field, cells) {
  const frame = () => new Promise((done) => requestAnimationFrame(done));
  const bytes = () => [...document.querySelectorAll(cells)].map((one) => one.textContent).join("");
  const input = document.querySelector(field);
  const before = bytes();
  input.value = input.value === "1" ? "2" : "1";
  input.dispatchEvent(new Event("input", { bubbles: true }));
  await new Promise((done) => setTimeout(done));
  const began = performance.now();
  const changed = new Promise((done) => {
    const watcher = new MutationObserver(() => bytes() !== before && (watcher.disconnect(), done()));
    watcher.observe(document.body, { subtree: true, childList: true, characterData: true });
  });
  input.dispatchEvent(new KeyboardEvent("keydown", { key: "Enter", bubbles: true }));
  await changed;
  await frame();
  await frame();
  return performance.now() - began;
}

async function timeChanges(page, count) {
  const field = await fieldOf(page);
  const times = [];
  for (let index = 0; index < count; ++index) {
    times.push(await page.evaluate(timeChangeThere, field, image));
  }
  return times;
}

async function timeManyPages(browser, server) {
  const began = performance.now();
  const pages = await Promise.all(Array.from({ length: pagesAtOnce }, () => opened(browser, server)));
  const all = performance.now() - began;
  const times = await timeChanges(pages[0].page, changes);
  await Promise.all(pages.map((one) => one.close()));
  return { all, times };
}

async function measure(folder) {
  const { prepare } = require("../tests/workbench/harness/workplace.cjs");
  const { Server } = require("../tests/workbench/harness/programs.cjs");
  const browser = await require("../tests/workbench/harness/browser.cjs").start(folder);
  await prepare(path.join(folder, "files"));
  const files = path.join(folder, "files");
  console.log(`${"ms".padEnd(58)}     p50     p95     max`);
  for (const file of ["stations/pump-house.yaml", row]) {
    const times = [];
    for (let count = 0; count < firstViews; ++count) {
      times.push(await timeFirstView(browser, files, file));
    }
    print(`first view of ${file}`, times);
  }
  const server = await Server.start(files, [row, "--folder", "."]);
  const { page, close } = await opened(browser, server);
  print("change of a value, 64 modules", await timeChanges(page, changes));
  await close();
  const many = await timeManyPages(browser, server);
  print(`${pagesAtOnce} pages opened at once, until all show the row`, [many.all]);
  print(`change of a value, 64 modules, ${pagesAtOnce} pages open`, many.times);
  await server.end();
  await browser.close();
}

async function main() {
  const missing = settings.whatIsMissing();
  if (missing !== null) {
    throw new Error(missing);
  }
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), "bench-page-"));
  try {
    await measure(folder);
  } finally {
    fs.rmSync(folder, { recursive: true, force: true, maxRetries: 5 });
  }
}

main().then(() => process.exit(0), (error) => {
  console.error(error);
  process.exit(1);
});
