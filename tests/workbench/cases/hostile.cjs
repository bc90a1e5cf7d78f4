// Modules and stations whose names and pictures attack the page: all of it is shown as what it is, a text or an image.
"use strict";

const { equal, soon, soonHas, untilMet } = require("../harness/expected.cjs");
const { ofModules, texts, writeInto } = require("../harness/hostile.cjs");
const { StationView } = require("../harness/station-view.cjs");

const dangerous = "iframe, object, embed, base, form[action], script:not([src=\"/workbench.js\"]), [onload], [onerror], [onfocus], [onclick], a[href^=javascript]";

async function serve(t, file) {
  const workplace = t.workplace();
  writeInto(workplace);
  const server = await t.server(workplace, ...(file === "" ? [] : [file]), "--folder", ".");
  return { workplace, server };
}

/** Nothing of the texts has become markup or was carried out, and nothing was asked for elsewhere. */
async function isHarmless(t, page) {
  equal("carried out", await page.evaluate(() => window.attacked ?? null), null);
  equal("elements", await page.evaluate((all) => [...document.querySelectorAll(all)].map((one) => one.outerHTML.slice(0, 200)), dangerous), []);
  equal("pages opened", (await page.page.browserContext().pages()).length, 1);
  equal("messages of the browser", t.watch.faults, []);
}

const visible = (text) => text.replace(/\s+/g, " ").trim();

module.exports = {
  async "names of a module are texts, in each of its parts"(t) {
    const { server } = await serve(t, "hostile.yaml");
    const page = await t.open(server);
    await page.heading(texts[0]);
    await isHarmless(t, page);
    for (const name of ["Process image", "Channels", "Properties", "Bytes of the file", "Parameters"]) {
      await page.click("tab", name);
      await soonHas(`panel of ${name}`, () => page.text("[role=tabpanel]"), /\S/);
      await isHarmless(t, page);
    }
    const shown = await page.texts("[data-parameter] > label");
    equal("names of the parameters", shown, ofModules.map(visible));
  },

  async "options of a parameter are texts"(t) {
    const { server } = await serve(t, "hostile.yaml");
    const page = await t.open(server);
    const field = await page.page.waitForSelector("[data-parameter] select");
    await field.select(texts[1]);
    await soonHas("count", () => page.text(".module-head"), "1 value changed");
    await isHarmless(t, page);
  },

  async "the picture of a module is an image, and asks for nothing"(t) {
    const { server } = await serve(t, "hostile.yaml");
    const page = await t.open(server);
    await page.heading(texts[0]);
    const image = await untilMet("picture", () => page.evaluate(() => document.querySelector(".module-head img")?.src.slice(0, 19)), (found) => found !== undefined, "an image");
    equal("its address", image, "data:image/svg+xml;");
    equal("no markup of it", await page.evaluate(() => document.querySelectorAll("svg script, svg foreignObject, main svg").length), 0);
    await isHarmless(t, page);
  },

  async "the data sheet of such a module carries out nothing"(t) {
    const { workplace } = await serve(t, "hostile.yaml");
    const html = (await workplace.output("datasheet", "hostile.yaml", "-o", "-")).toString();
    const page = await t.blank();
    await page.page.setContent(html);
    equal("heading", visible(await page.text("h1")), visible(texts[0]));
    equal("carried out", await page.evaluate(() => window.attacked ?? null), null);
    equal("elements", await page.evaluate((all) => document.querySelectorAll(all).length, `script, ${dangerous}`), 0);
    equal("requests elsewhere", t.watch.requests.filter((one) => one.url.includes("198.51.100.7")), []);
  },

  async "names, aliases and comments of a station are texts"(t) {
    const { server } = await serve(t, "hostile-station.yaml");
    const page = await t.open(server);
    const view = await StationView.on(page, 2 * texts.length);
    await page.heading(texts[0]);
    equal("names", await view.names(), texts.flatMap((one) => [visible(one), visible(`r${one}`)]));
    await isHarmless(t, page);
    for (const name of ["Its channels", "Process images", "All channels", "Selected module"]) {
      await page.click("tab", name);
      await soonHas(`panel of ${name}`, () => page.text("[role=tabpanel]"), /\S/);
      await isHarmless(t, page);
    }
    equal("pictures", await page.evaluate(() => [...document.querySelectorAll(".entry-card img")].every((one) => one.src.startsWith("data:image/"))), true);
  },

  async "what is done with such names stays text: menus, dialogs, messages"(t) {
    const { server } = await serve(t, "hostile-station.yaml");
    const page = await t.open(server);
    const view = await StationView.on(page);
    for (const button of ["Add module …", "Reserve bytes …", "Export …"]) {
      await page.click("button", button);
      await soonHas("dialog", () => page.dialog(), /./);
      await isHarmless(t, page);
      await page.press("Escape");
      await soon("dialog", () => page.dialog(), "");
    }
    await view.choose(visible(texts[1]));
    await page.press("Alt+ArrowRight");
    await soonHas("what is said", () => page.evaluate(() => document.querySelector("[role=status].heard").textContent), "<script>");
    await page.press("Delete");
    await soon("entries", async () => (await view.names()).length, 2 * texts.length - 1);
    await isHarmless(t, page);
  },

  async "names of files are texts"(t) {
    const { server } = await serve(t, "");
    const page = await t.open(server, { route: "#/catalogue" });
    const name = "modules/<img src=x onerror=window.attacked=20>.yaml";
    await page.click("link", name);
    await page.heading(texts[0]);
    await isHarmless(t, page);
    await page.page.reload();
    await page.heading(texts[0]);
  },

  async "a wrong text of a station is quoted as text"(t) {
    const { server } = await serve(t, "hostile-station.yaml");
    const page = await t.open(server);
    const view = await StationView.on(page);
    await view.type(`station: x\nmodules:\n  - module: "<img src=x onerror=window.attacked=30>"\n  - {"<script>window.attacked=31</script>": 1}\n`);
    await soonHas("finding", () => view.findings(), "onerror=window.attacked=30");
    await isHarmless(t, page);
  },

  async "a draft kept by the tab is text as well"(t) {
    const { server } = await serve(t, "hostile-station.yaml");
    const page = await t.open(server);
    const view = await StationView.on(page);
    await view.type(`# ${texts[4]}\n${await view.text()}`);
    await soonHas("state", () => view.saveState(), "Not saved");
    await page.page.reload();
    await soonHas("text", () => view.text(), texts[4]);
    await isHarmless(t, page);
  },
};
