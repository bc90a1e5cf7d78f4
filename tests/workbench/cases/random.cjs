// Random values of random modules, and random stations, against mxtool. RANDOM_CONFIGURATIONS=200 with CASE_SECONDS=900
// is the long form, RANDOM_SEED=NUMBER another sequence.
"use strict";

const fs = require("fs");
const { equalBytes, isTrue, soon, soonHas, untilMet } = require("../harness/expected.cjs");
const { ModuleView } = require("../harness/module-view.cjs");
const { StationView } = require("../harness/station-view.cjs");
const { Random, seed } = require("../harness/random.cjs");

const configurations = Number(process.env.RANDOM_CONFIGURATIONS ?? "15");
const stations = Math.ceil(configurations / 4);
const mostChanges = 4;

function modulesOf(workplace, suffix) {
  return fs.readdirSync(workplace.path("modules")).filter((one) => /^MX\d{4}\./.test(one) && one.endsWith(suffix) && !one.startsWith("MX9999"));
}

/** The words of a field, as its control has them; null: a number is typed. */
function wordsOf(page, field) {
  return page.evaluate((one) => {
    const all = [...document.querySelectorAll(`${one} input, ${one} select`)];
    if (all[0].type === "checkbox") return "switch";
    if (all[0].tagName === "SELECT") return [...all[0].options].map((option) => option.value);
    return all[0].type === "radio" ? all.map((radio) => radio.value) : null;
  }, field);
}

function numberFor({ min_digits: least, max_digits: most }, random) {
  const [from, to] = [Number(least), Number(most)];
  const between = Math.ceil(from + (random.below(1001) / 1000) * (to - from));
  return random.of([least, most, String(Math.min(between, Math.floor(to))), "1"]);
}

/** What the other position of a switch is for mxtool. */
function otherOf({ options }, value) {
  const other = options.find((one) => one.value !== value);
  return other === undefined ? String(1 - Number(value)) : `#${other.value}`;
}

/** Sets a random value on the page; gives what mxtool is told. */
async function setRandomly(view, parameter, known, random) {
  const words = await wordsOf(view.page, view.field(parameter.id));
  if (words === "switch") {
    await view.set(parameter.id, "");
    return otherOf(parameter, known.value);
  }
  const value = words === null ? numberFor(parameter, random) : random.of(words);
  await view.set(parameter.id, value);
  return value;
}

async function asMxtool(t, file, sets) {
  const [raw, modbus] = await Promise.all(["raw", "modbus"].map((bus) => t.shared.run("config", file, ...sets, "--fieldbus", bus, "--format", "json")));
  return raw.code === 0 ? { raw: JSON.parse(raw.out), modbus: JSON.parse(modbus.out) } : null;
}

/** Sets some values of one module, and compares after each. */
async function configureRandomly(t, page, file, random) {
  await page.go(`#/module/${encodeURIComponent(file)}`);
  const [device, before] = [await t.shared.json("show", file), await asMxtool(t, file, [])];
  const view = new ModuleView(page);
  const all = device.parameters.filter((one) => before.raw.parameters.some((known) => known.id === one.id && known.digits !== ""));
  if (all.length === 0) {
    return;
  }
  await page.page.waitForSelector(view.field(all[0].id));
  await view.showsBytesOf(before);
  const values = new Map();
  let last = before;
  for (let count = 0; count < mostChanges; ++count) {
    const parameter = random.of(all);
    if (!values.has(parameter.id)) {
      const known = last.raw.parameters.find((one) => one.id === parameter.id);
      const value = await setRandomly(view, parameter, known, random);
      const tried = await asMxtool(t, file, [...values, [parameter.id, value]].flatMap(([id, text]) => ["--set", `#${id}=${text}`]));
      if (tried === null) {
        await soonHas(`${file}: #${parameter.id}=${value} is refused`, () => page.text(view.field(parameter.id)), "is not accepted");
        await page.press("Escape");
        return;
      }
      values.set(parameter.id, value);
      last = tried;
      await view.showsBytesOf(tried).catch((error) => {
        throw new Error(`${file} ${JSON.stringify([...values])}: ${error.message}`);
      });
    }
  }
  await view.marksChangesOf(last);
}

/** The text of a station of random modules and reserved places. */
function stationOf(workplace, random) {
  const files = modulesOf(workplace, ".yaml");
  const lines = ["station: random", "modules:"];
  for (let count = 2 + random.below(8); count > 0; --count) {
    lines.push(random.below(5) === 0
      ? `  - reserve: {in: ${1 + random.below(9)}, out: ${random.below(4)}, name: place ${count}}`
      : `  - {module: ../modules/${random.of(files)}, name: M${count}}`);
  }
  return `${lines.join("\n")}\n`;
}

module.exports = {
  async "values of modules: image and registers are those of mxtool config"(t) {
    const random = new Random(seed);
    const page = await t.open(await t.sharedServer("--folder", "."));
    const files = modulesOf(t.shared, ".bin");
    isTrue("there are modules", files.length > 30);
    for (let count = 0; count < configurations; ++count) {
      await page.page.reload();
      await configureRandomly(t, page, `modules/${random.of(files)}`, random);
    }
  },

  async "stations: row and exports are those of mxtool station"(t) {
    const random = new Random(seed + 1);
    const server = await t.sharedServer("stations/pump-house.yaml", "--folder", ".");
    const page = await t.open(server);
    const view = await StationView.on(page);
    const downloads = await t.downloads(page);
    const forms = { "Channels, CSV": ["channels", "--format", "csv"], "Row, JSON": ["show", "--format", "json"], "Parameters, JSON": ["config", "--format", "json"] };
    for (let count = 0; count < stations; ++count) {
      const text = stationOf(t.shared, random);
      await view.type(text);
      t.shared.write("stations/random.yaml", text);
      const { code } = await t.shared.run("station", "show", "stations/random.yaml");
      if (code === 0) {
        await view.isAsPlanned(t.shared);
        const [label, [verb, ...more]] = random.of(Object.entries(forms));
        await page.click("button", "Export …");
        await page.click("button", label, "dialog");
        equalBytes(label, (await downloads.next()).bytes, await t.shared.output("station", verb, "stations/random.yaml", ...more));
        await page.press("Escape");
        await soon("dialog", () => page.dialog(), "");
      } else {
        await untilMet("an error is said", () => view.findings(), (found) => /[1-9]\d* error/.test(found), "errors");
      }
    }
  },
};
