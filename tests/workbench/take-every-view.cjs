// Takes a picture of each view and dialog of the page: light and dark, 360, 1280 and 2560 pixels wide, to be looked at.
//
// Usage: node take-every-view.cjs PROJECT MXTOOL EXAMPLE_MODULES OUTPUT_FOLDER, each as a whole path
"use strict";

const fs = require("fs");
const os = require("os");
const path = require("path");
const settings = require("./harness/settings.cjs");

const file = "stations/pump-house.yaml";
const call = [file, "--folder", ".", "--db", "sqlite:catalogue.sqlite"];

const tab = (name) => async (page) => page.click("tab", name);
const dialog = (button) => async (page) => {
  await page.press("Escape");
  await page.click("button", button, "main");
};

async function plan(page) {
  await page.press("Escape");
  await page.click("button", "Plan", ".online");
  await page.click("button", "Read", ".live-values"); // another page may have begun
  await page.page.waitForSelector("table.live");
  await page.page.waitForSelector(".difference");
}

// Of each view its address and what is done there before each picture.
const views = [
  ["catalogue", "#/catalogue", { found: (page) => page.page.waitForSelector("table.cards") }],
  ["module", "#/module/..%2Fmodules%2FMX0304.bin", {
    parameters: (page) => page.page.waitForSelector("[data-parameter]"),
    changed: async (page) => {
      await page.fill(await page.page.waitForSelector("[data-parameter=\"21\"] input"), "9.9");
      await page.fill(await page.page.waitForSelector("[data-parameter=\"22\"] input"), "99");
      await page.page.waitForSelector(".field-refused");
    },
    image: tab("Process image"),
    channels: tab("Channels"),
    properties: tab("Properties"),
    file: tab("Bytes of the file"),
  }],
  ["station", "#/station", {
    row: async (page) => {
      await page.page.waitForSelector(".entry-card img");
      await page.page.evaluate(() => document.querySelectorAll(".entry-card")[1].click());
      await page.page.waitForSelector("[data-parameter=\"21\"]");
    },
    notes: tab("Its channels"),
    images: tab("Process images"),
    channels: tab("All channels"),
    add: dialog("Add module …"),
    reserve: dialog("Reserve bytes …"),
    export: dialog("Export …"),
  }],
  ["online", "#/online", { plan }],
];

const screens = [360, 1280, 2560].flatMap((width) => ["light", "dark"].map((scheme) => ({ width, scheme })));

async function isQuiet(page) {
  await page.page.waitForNetworkIdle({ idleTime: 150, timeout: 5_000 }).catch(() => undefined);
}

async function takeView(run, [view, route, steps], { width, scheme }) {
  const { Page } = require("./harness/page.cjs");
  const context = await run.browser.createBrowserContext();
  const page = await context.newPage();
  await page.emulateMediaFeatures([{ name: "prefers-color-scheme", value: scheme }]);
  page.setDefaultTimeout(120_000);
  await page.setViewport({ width, height: width === 360 ? 740 : 900 });
  const opened = await Page.open(page, run.server.address);
  await opened.go(route);
  for (const [step, show] of Object.entries(steps)) {
    await show(opened);
    await page.mouse.move(0, 0);
    await isQuiet(opened);
    await run.take(page, `${view}-${step}`, `${width}-${scheme}`);
  }
  await context.close();
}

async function takeAll(folder) {
  const { prepare } = require("./harness/workplace.cjs");
  const { Coupler, Server } = require("./harness/programs.cjs");
  const files = path.join(folder, "files");
  await prepare(files);
  const coupler = await Coupler.start(files, [file]);
  const server = await Server.start(files, [...call, "--target", coupler.target]);
  const browser = await require("./harness/browser.cjs").start(folder);
  const take = (page, name, screen) => page.screenshot({ path: path.join(settings.output, `${name}-${screen}.png`) });
  for (const screen of screens) {
    for (const view of views) {
      await takeView({ browser, server, take }, view, screen);
    }
  }
  await browser.close();
  await Promise.all([server.end(), coupler.end()]);
}

async function main() {
  const missing = settings.whatIsMissing();
  if (missing !== null) {
    throw new Error(missing);
  }
  fs.mkdirSync(settings.output, { recursive: true });
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), "pictures-"));
  try {
    await takeAll(folder);
  } finally {
    fs.rmSync(folder, { recursive: true, force: true, maxRetries: 5 });
  }
}

main().then(() => process.exit(0), (error) => {
  console.error(error);
  process.exit(1);
});
