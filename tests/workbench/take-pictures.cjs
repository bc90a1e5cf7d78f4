// Takes pictures of the page: those of docs/pictures, and each view and dialog in light and dark, 360, 1280 and 2560
// pixels wide, to be looked at.
"use strict";

const fs = require("fs");
const os = require("os");
const path = require("path");
const { soonHas } = require("./harness/expected.cjs");
const settings = require("./harness/settings.cjs");

const help = `Usage: node take-pictures.cjs PROJECT MXTOOL EXAMPLE_MODULES OUTPUT_FOLDER [WORD...]

Takes pictures of the page of mxtool serve, each NAME.png in OUTPUT_FOLDER; all arguments are whole paths:

  workbench-VIEW            those of docs/pictures
  VIEW-STEP-WIDTH-SCHEME    each view and dialog: 360, 1280 and 2560 pixels wide, light and dark

With words only those whose names have all of them:

  node take-pictures.cjs "$PWD" "$PWD/build/release/bin/mxtool" "$PWD/build/release/examples/modules" \\
      "$PWD/docs/pictures" workbench`;

const station = "stations/pump-house.yaml";
const laptop = { scheme: "light", viewport: { width: 1280, height: 800 } };

// What the coupler has: the station's names for its channels.
const live = { LT_101: 16384, LT_102: 9830, P_101: 1, "MX0116/DI 1": 1, "MX0116/DI 2": 1, "MX0116/DI 5": 1 };

// Changed values of MX0304 by identifier, and the parameter whose bytes are lit.
const values = { 19: "60", 21: "8", 23: "2.5" };
const lit = "21";

const tab = (name) => (page) => page.click("tab", name);
const dialog = (button) => async (page) => {
  await page.press("Escape");
  await page.click("button", button, "main");
};
const field = (page, id) => page.page.waitForSelector(`[data-parameter="${id}"] input`);

async function chooseLevels(page) {
  await page.page.waitForSelector(".entry-card img");
  await page.evaluate(() => document.querySelectorAll(".entry-card")[1].click());
  await page.page.waitForSelector(`[data-parameter="${lit}"]`);
}

async function setValues(page) {
  for (const [id, word] of Object.entries(values)) {
    await page.fill(await field(page, id), word);
  }
  await soonHas("changed values", () => page.text(".module-head"), `${Object.keys(values).length} values changed`);
  await (await field(page, lit)).focus();
}

async function planAndRead(page) {
  await page.press("Escape");
  await page.click("button", "Plan", ".online");
  await soonHas("plan", () => page.text(".online"), "To write");
  await page.click("button", "Read", ".live-values"); // another page may have begun
  await soonHas("values", () => page.text(".online table.live"), String(live.LT_101));
  await page.evaluate(() => {
    document.activeElement.blur();
    scrollTo(0, document.querySelector(".difference").offsetTop - 60);
  });
}

// Of each view its address and what is done there before each picture.
const ofDocuments = {
  station: ["#/station", { "": chooseLevels }],
  module: ["", { "": setValues }],
  online: ["#/online", { "": planAndRead }],
};
const ofViews = {
  catalogue: ["#/catalogue", { found: (page) => page.page.waitForSelector("table.cards") }],
  module: ["#/module/..%2Fmodules%2FMX0304.bin", {
    parameters: (page) => page.page.waitForSelector("[data-parameter]"),
    changed: async (page) => {
      await page.fill(await field(page, "21"), "9.9");
      await page.fill(await field(page, "22"), "99");
      await page.page.waitForSelector(".field-refused");
    },
    image: tab("Process image"),
    channels: tab("Channels"),
    properties: tab("Properties"),
    file: tab("Bytes of the file"),
  }],
  station: ["#/station", {
    row: chooseLevels,
    notes: tab("Its channels"),
    images: tab("Process images"),
    channels: tab("All channels"),
    add: dialog("Add module …"),
    reserve: dialog("Reserve bytes …"),
    export: dialog("Export …"),
  }],
  online: ["#/online", { plan: planAndRead }],
};

const isWanted = (name) => settings.words.every((word) => name.includes(word));

/** Takes the wanted ones of `names`, which are by step. */
async function takeView(t, server, [route, steps], names, screen) {
  if (!Object.values(names).some(isWanted)) {
    return;
  }
  const page = await t.open(server, { ...screen, route });
  for (const [step, show] of Object.entries(steps)) {
    await show(page);
    await page.page.mouse.move(0, 0);
    await page.page.waitForNetworkIdle({ idleTime: 150, timeout: 5_000 }).catch(() => undefined);
    await page.evaluate(() => Promise.all(document.getAnimations().map((one) => one.finished)));
    if (isWanted(names[step])) {
      await page.page.screenshot({ path: path.join(settings.output, `${names[step]}.png`) });
    }
  }
  await page.page.browserContext().close();
}

function namesOf(steps, name) {
  return Object.fromEntries(Object.keys(steps).map((step) => [step, name(step)]));
}

async function takeAll(t) {
  const workplace = t.workplace();
  const coupler = await t.coupler(workplace, station);
  for (const [name, value] of Object.entries(live)) {
    await coupler.set(name, value);
  }
  const call = [station, "--folder", ".", "--target", coupler.target];
  const server = await t.server(workplace, ...call);
  for (const [name, view] of Object.entries(ofDocuments)) {
    const used = name === "module" ? await t.server(workplace, "modules/MX0304.bin") : server;
    await takeView(t, used, view, { "": `workbench-${name}` }, laptop);
  }
  const full = await t.server(workplace, ...call, "--db", "sqlite:catalogue.sqlite");
  for (const width of [360, 1280, 2560]) {
    for (const scheme of ["light", "dark"]) {
      const screen = { scheme, viewport: { width, height: width === 360 ? 740 : 900 } };
      for (const [name, view] of Object.entries(ofViews)) {
        await takeView(t, full, view, namesOf(view[1], (step) => `${name}-${step}-${width}-${scheme}`), screen);
      }
    }
  }
}

async function main() {
  if (process.argv.includes("--help")) {
    console.log(help);
    return;
  }
  const missing = settings.whatIsMissing();
  if (missing !== null) {
    throw new Error(`${missing}\n${help}`);
  }
  const { Case } = require("./harness/case.cjs");
  const { prepare } = require("./harness/workplace.cjs");
  fs.mkdirSync(settings.output, { recursive: true });
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
  console.error(error.message);
  process.exit(1);
});
