// The catalogue: searched, narrowed by conditions, and left for a module.
"use strict";

const fs = require("fs");
const path = require("path");
const { equal, isTrue, soon, soonHas, untilMet } = require("../harness/expected.cjs");
const { Workplace } = require("../harness/workplace.cjs");

const call = ["--folder", ".", "--db", "sqlite:catalogue.sqlite"];
const found = ".catalogue table.cards tbody tr";
const identifiers = `${found} td[data-label=Identifier]`;

async function open(t) {
  return t.open(await t.sharedServer(...call), { route: "#/catalogue" });
}

/** Identifiers of the modules that the command line finds. */
async function expectedOf(t, ...options) {
  const all = await t.shared.json("devices", "--db", "sqlite:catalogue.sqlite", ...options);
  return all.devices.map((one) => one.module_id);
}

async function addCondition(page, property, comparison, value) {
  await page.choose("Property", property);
  await page.choose("Comparison", comparison);
  await page.fillField("Value", value, "Enter");
}

/** A folder with a catalogue of one module without "ai" and of `count` modules with it, each MX0304 with another identifier. */
async function withManyModules(t, count) {
  const workplace = t.workplace();
  fs.mkdirSync(workplace.path("many"));
  const write = (example, moduleId, number) => {
    const file = fs.readFileSync(workplace.path(`modules/${example}.bin`));
    file.writeUInt32BE(number, file.indexOf(Buffer.from(moduleId, "hex")));
    fs.writeFileSync(workplace.path(`many/MX${number}.bin`), file);
  };
  write("MX0001", "0bc1e800", 1);
  for (let index = 0; index < count; ++index) write("MX0304", "5a030304", 0x1000 + index);
  await workplace.run("populate", "many", "--db", "sqlite:many.sqlite");
  return workplace;
}

module.exports = {
  async "without a file the page says what can be done, and all of it works"(t) {
    const workplace = t.workplace();
    const folder = workplace.path("empty");
    fs.mkdirSync(folder);
    const page = await t.open(await t.server(new Workplace(folder)));
    const commands = await untilMet("commands", () => page.texts(".first-steps code"), (found) => found.length > 0, "some");
    equal("fields for a search of nothing", await page.has("input[type=search]"), false);
    fs.mkdirSync(path.join(folder, "modules"));
    fs.copyFileSync(workplace.path("modules/MX0304.bin"), path.join(folder, "modules/MX0304.bin"));
    fs.copyFileSync(workplace.path("modules/MX0304.bin"), path.join(folder, "module.bin"));
    fs.writeFileSync(path.join(folder, "station.yaml"), "modules:\n  - module.bin\n");
    for (const command of commands) {
      const [program, ...words] = command.replace("--open", "--port 0 --seconds 0").split(" ");
      equal("program", program, "mxtool");
      const { code, err } = await new Workplace(folder).run(...words);
      equal(`exit code of ${command}: ${err}`, code, 0);
    }
    await page.click("link", "Begin a new station");
    await page.heading("New station");
    const again = await t.open(await t.server(new Workplace(folder)));
    await soonHas("steps", () => again.text(".first-steps"), "they are listed below");
    await again.click("link", "module.bin");
    await again.heading("4 AI ±10 V / 0-20 mA");
  },

  async "shows every module of the database"(t) {
    const page = await open(t);
    await soon("modules", () => page.texts(identifiers), await expectedOf(t));
  },

  async "finds what the command line finds for words"(t) {
    const page = await open(t);
    await page.fillField("Search words", "relay 230");
    const expected = await expectedOf(t, "--search", "relay 230");
    isTrue("the words are of some modules only", expected.length > 0 && expected.length < 10);
    await soon("modules", () => page.texts(identifiers), expected);
    await soonHas("count", () => page.text(".catalogue .count"), `${expected.length} module`);
  },

  async "narrows the search by conditions"(t) {
    const page = await open(t);
    await addCondition(page, "in_bytes", ">", "4");
    await addCondition(page, "unit", "=", "V");
    await soon("modules", () => page.texts(identifiers), await expectedOf(t, "--where", "in_bytes>4", "--where", "unit=V"));
    await page.click("button", "Remove the condition in_bytes>4");
    await soon("modules", () => page.texts(identifiers), await expectedOf(t, "--where", "unit=V"));
  },

  async "gives a long list in parts, as the command line does"(t) {
    const workplace = await withManyModules(t, 120);
    const { devices } = await workplace.json("devices", "--db", "sqlite:many.sqlite", "--search", "ai");
    const all = devices.map((one) => one.module_id);
    const page = await t.open(await t.server(workplace, "--db", "sqlite:many.sqlite"), { route: "#/catalogue" });
    await page.fillField("Search words", "ai");
    await soon("the first modules", () => page.texts(identifiers), all.slice(0, 50));
    await soonHas("count", () => page.text(".catalogue .count"), "The first 50 modules; more match");
    await page.click("button", "Show more modules");
    await soon("more modules", () => page.texts(identifiers), all.slice(0, 100));
    await page.click("button", "Show more modules");
    await soon("all modules", () => page.texts(identifiers), all);
    await soonHas("count", () => page.text(".catalogue .count"), "120 modules");
    equal("a button for more", (await page.text(".catalogue")).includes("Show more"), false);
    const focused = () => page.evaluate(() => document.activeElement.closest("tr")?.dataset.item);
    await soon("the row with the focus: the first new one", focused, "100");
  },

  async "shows no older answer after a newer one"(t) {
    const page = await open(t);
    await soon("modules", () => page.texts(identifiers), await expectedOf(t));
    // The answer to "relay" is complete when the call was ended already, and arrives last.
    await page.evaluate(() => {
      const fetchNow = window.fetch;
      const held = new Promise((release) => { window.release = release; });
      window.fetch = async (path, request) => {
        if (!request.body?.includes("relay")) return fetchNow(path, request);
        const response = await fetchNow(path, { ...request, signal: undefined });
        window.isAnswered = true;
        await held;
        return response;
      };
    });
    await page.fillField("Search words", "relay");
    await soon("answer to the older search", () => page.evaluate(() => window.isAnswered), true);
    await page.fillField("Search words", "K38-304");
    await soon("newer answer", () => page.texts(identifiers), ["5a030304"]);
    await page.evaluate(() => new Promise((done) => { window.release(); setTimeout(done, 100); }));
    equal("modules", await page.texts(identifiers), ["5a030304"]);
  },

  async "says that nothing was found"(t) {
    const page = await open(t);
    await page.fillField("Search words", "no module has this");
    await soonHas("message", () => page.text(".catalogue"), "No module has all of this.");
    equal("modules", await page.texts(identifiers), []);
  },

  async "says what a condition accepts"(t) {
    t.allow(/status of 422/);
    const page = await open(t);
    await addCondition(page, "in_bytes", ">", "many");
    const { err } = await t.shared.run("devices", "--db", "sqlite:catalogue.sqlite", "--where", "in_bytes>many");
    const reason = /expected [^\n]*/.exec(err)[0];
    await soonHas("finding", () => page.text(".catalogue"), reason);
  },

  async "opens a module by its label, with its picture as an image"(t) {
    const page = await open(t);
    await page.fillField("Search words", "K38-304");
    await page.click("link", "4 AI ±10 V / 0-20 mA");
    await page.heading("4 AI ±10 V / 0-20 mA");
    const picture = await page.evaluate(() => {
      const image = document.querySelector(".module-head img");
      return { begins: image?.src.slice(0, 11), alt: image?.alt, isDrawn: image?.complete && image.naturalWidth > 0 };
    });
    equal("picture", picture, { begins: "data:image/", alt: "Picture of 4 AI ±10 V / 0-20 mA", isDrawn: true });
    equal("no markup of the picture", await page.has("main svg"), false);
  },

  async "keeps the search while a module is looked at"(t) {
    const page = await open(t);
    await page.fillField("Search words", "K38-304");
    await page.click("link", "4 AI ±10 V / 0-20 mA");
    await page.heading("4 AI ±10 V / 0-20 mA");
    await page.click("link", "Catalogue");
    await soon("modules", () => page.texts(identifiers), ["5a030304"]);
  },

  async "lists the files of the folder, and opens one"(t) {
    const page = await open(t);
    const name = "modules/MX0804.bin";
    const { label } = await t.shared.json("config", name);
    await page.fillField("Search words", label);
    await soon("files with these words", () => page.texts(".catalogue .files li > span"),
      [name, name.replace(".bin", ".yaml")].map((one) => `${one} ${label}`));
    await page.click("link", name);
    await page.heading(label);
  },

  async "says that there is no catalogue, and shows the folder"(t) {
    const workplace = t.workplace();
    workplace.write("empty/modules/MX0108.yaml", workplace.read("modules/MX0108.yaml"));
    const page = await t.open(await t.server(workplace, "--folder", "empty"));
    await soonHas("message", () => page.text("main"), "Search a catalogue: make one of a folder of mx files, then start with it:");
    await soon("files", () => page.texts(".catalogue .files a"), ["modules/MX0108.yaml"]);
  },
};
