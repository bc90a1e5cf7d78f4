// Takes the pictures of docs/pictures that show the workbench.
//
// Usage: node take-pictures.cjs PROJECT MXTOOL EXAMPLE_MODULES OUTPUT_FOLDER, each as a whole path
//
// Needs also the Debian package pngquant: with a palette a picture has a third of the bytes.
"use strict";

const { execFileSync } = require("child_process");
const fs = require("fs");
const os = require("os");
const path = require("path");
const { soonHas } = require("./harness/expected.cjs");
const settings = require("./harness/settings.cjs");

const station = "stations/pump-house.yaml";
const screen = { scheme: "light", viewport: { width: 1280, height: 800 } };

// What the coupler has while the picture is taken: the station's names for its channels.
const live = { LT_101: 16384, LT_102: 9830, P_101: 1, "MX0116/DI 1": 1, "MX0116/DI 2": 1, "MX0116/DI 5": 1 };

// Changed values of MX0304 by identifier, and the parameter whose bytes are lit.
const values = { 19: "60", 21: "8", 23: "2.5" };
const lit = "21";

async function save(page, name) {
  await page.page.mouse.move(1, 799);
  await page.evaluate(() => Promise.all(document.getAnimations().map((one) => one.finished)));
  const file = path.join(settings.output, name);
  await page.page.screenshot({ path: file });
  execFileSync("pngquant", ["--force", "--output", file, "--strip", "128", file]);
}

async function takeStation(t, server) {
  const { StationView } = require("./harness/station-view.cjs");
  const page = await t.open(server, screen);
  const view = await StationView.on(page);
  await view.choose("Levels");
  await page.find("field", "Upper limit");
  await save(page, "workbench-station.png");
}

async function takeModule(t, workplace) {
  const { ModuleView } = require("./harness/module-view.cjs");
  const page = await t.open(await t.server(workplace, "modules/MX0304.bin"), screen);
  const view = new ModuleView(page);
  for (const [id, word] of Object.entries(values)) {
    await view.set(id, word);
  }
  await soonHas("changed values", () => page.text(".module-head"), `${Object.keys(values).length} values changed`);
  await (await page.page.waitForSelector(`[data-parameter="${lit}"] input`)).focus();
  await save(page, "workbench-module.png");
}

async function takeOnline(t, server, coupler) {
  for (const [name, value] of Object.entries(live)) {
    await coupler.set(name, value);
  }
  const page = await t.open(server, { ...screen, route: "#/online" });
  await page.heading("Online");
  await page.click("button", "Plan", ".online");
  await soonHas("plan", () => page.text(".online"), "To write");
  await page.click("button", "Read live values");
  await soonHas("values", () => page.text(".online table.live"), String(live.LT_101));
  await page.evaluate(() => {
    document.activeElement.blur();
    scrollTo(0, document.querySelector(".difference").offsetTop - 60);
  });
  await save(page, "workbench-online.png");
}

async function takeAll(t) {
  const workplace = t.workplace();
  const coupler = await t.coupler(workplace, station);
  const server = await t.server(workplace, station, "--folder", ".", "--target", coupler.target);
  await takeStation(t, server);
  await takeModule(t, workplace);
  await takeOnline(t, server, coupler);
}

async function main() {
  const missing = settings.whatIsMissing();
  if (missing !== null) {
    throw new Error(missing);
  }
  const { Case } = require("./harness/case.cjs");
  const { prepare } = require("./harness/workplace.cjs");
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), "pictures-"));
  const run = { folder, template: path.join(folder, "template"), servers: new Map() };
  await prepare(run.template);
  run.browser = await require("./harness/browser.cjs").start(folder);
  const t = new Case(run, "pictures");
  try {
    await takeAll(t);
  } finally {
    await t.end();
    await run.browser.close();
    fs.rmSync(folder, { recursive: true, force: true, maxRetries: 5 });
  }
}

main().then(() => process.exit(0), (error) => {
  console.log(error);
  process.exit(1);
});
