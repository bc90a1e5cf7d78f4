// The text of a station beside its row: each changes the other, and nothing that a person wrote is lost.
"use strict";

const { equal, isTrue, soon, soonHas } = require("../harness/expected.cjs");
const { clickAtRest } = require("../harness/page.cjs");
const { StationView } = require("../harness/station-view.cjs");
const { parameterOf } = require("../harness/module-view.cjs");

const call = ["stations/pump-house.yaml", "--folder", "."];

async function open(t) {
  const page = await t.open(await t.sharedServer(...call));
  return { page, view: await StationView.on(page) };
}

/** The parameter image of a module as mxtool makes it of a text. */
async function imageOf(t, text, position) {
  const { modules } = await t.shared.ofText(text, "station", "config");
  return modules[position - 1];
}

async function openWithLines(t, change) {
  const workplace = t.workplace();
  workplace.write(call[0], change(workplace.read(call[0])));
  const page = await t.open(await t.server(workplace, ...call));
  return { page, view: await StationView.on(page), workplace };
}

module.exports = {
  async "entries keep their names while the text has errors"(t) {
    const page = await t.open(await t.sharedServer("stations/pump-house.yaml", "--folder", "."));
    const view = await StationView.on(page);
    const names = ["MX0116", "Levels", "flow meter", "Pumps"];
    await view.type(t.shared.read("stations/pump-house.yaml").replace("9.9 V", "11 V"));
    await soonHas("findings", () => view.findings(), "Upper limit");
    equal("entries", await view.names(), names);
    await page.fillField("Name", "Tanks", "Enter", ".entry-head");
    await soon("entries", () => view.names(), ["Tanks", ...names.slice(1)]);
  },

  async "typed text changes the row"(t) {
    const { view } = await open(t);
    const text = (await view.text()).replace("- ../modules/MX0116.yaml", "- ../modules/MX0108.yaml\n  - ../modules/MX0204.yaml");
    await view.type(text);
    await soon("entries", () => view.names(), ["MX0108", "MX0204", "Levels", "flow meter", "Pumps"]);
    equal("text", await view.text(), text);
    await view.isAsPlanned(t.shared);
  },

  async "an error is marked at its line, and the row says so"(t) {
    const { page, view } = await open(t);
    const before = await view.text();
    await view.type(before.replace("Upper limit: 9.9 V", "Upper limit: 99 V"));
    const line = before.split("\n").findIndex((one) => one.includes("Upper limit")) + 1;
    await soon("marked lines", () => page.texts(".yaml-gutter .marked.error"), [String(line)]);
    await soonHas("finding", () => view.findings(), "expected a number, -10 to 10 V");
    await soonHas("totals", () => page.text("[aria-label=Totals]"), "of the last text without errors");
    equal("entries", (await view.names()).slice(1), ["Levels", "flow meter", "Pumps"]);
    equal("text", await view.text(), before.replace("Upper limit: 9.9 V", "Upper limit: 99 V"));
    await view.type(before);
    await soon("marked lines", () => page.texts(".yaml-gutter .marked.error"), []);
    await view.isAsPlanned(t.shared);
  },

  async "a text that is no YAML is said to be none, and kept"(t) {
    const { page, view } = await open(t);
    await view.type("station: [\n");
    await soonHas("finding", () => view.findings(), "1 error");
    equal("text", await view.text(), "station: [\n");
    await page.press("Control+KeyZ");
    await soon("entries", () => view.names(), ["MX0116", "Levels", "flow meter", "Pumps"]);
  },

  async "a finding leads to its line"(t) {
    const { page, view } = await open(t);
    await view.type((await view.text()).replace("name: Pumps", "name: Levels"));
    await soonHas("finding", () => view.findings(), "1 error");
    const button = await page.page.waitForSelector(".problems .finding button, .problems button");
    await clickAtRest(button);
    await soonHas("selected text", () => page.evaluate(() => {
      const field = document.querySelector(".yaml textarea");
      return document.activeElement === field ? field.value.slice(0, field.selectionEnd).split("\n").pop() : "";
    }), /name: Levels/);
  },

  async "a value is set in the text as mxtool understands it"(t) {
    const { page, view } = await open(t);
    await view.choose("Levels");
    const raw = await t.shared.json("config", "modules/MX0304.bin");
    await page.page.waitForSelector(view.module.field(parameterOf(raw, 2, "Signal range").id));
    await view.module.set(parameterOf(raw, 2, "Signal range").id, "4-20 mA");
    await view.textHas("AI 3: {Signal range: 4-20 mA}");
    const { bytes } = await imageOf(t, await view.text(), 2);
    await soon("bytes", () => view.module.bytes("raw"), bytes);
    isTrue("byte 17 is that of 4-20 mA", bytes.split(" ")[17] === "03");
  },

  async "a value that is its default is no longer stated"(t) {
    const { page, view } = await open(t);
    await view.choose("Levels");
    const raw = await t.shared.json("config", "modules/MX0304.bin");
    const { id, default_shown: shown } = parameterOf(raw, null, "Mains suppression");
    await page.click("button", `Reset Mains suppression to ${shown}`, view.module.field(id));
    await view.textHas("Mains suppression: 60 Hz", false);
    const { bytes } = await imageOf(t, await view.text(), 2);
    await soon("bytes", () => view.module.bytes("raw"), bytes);
    isTrue("comments are kept", (await view.text()).includes("# of a channel below the channel. What is not stated keeps its default."));
  },

  async "a refused value says what is accepted, and leaves the text"(t) {
    const { page, view } = await open(t);
    await view.choose("Levels");
    const before = await view.text();
    const raw = await t.shared.json("config", "modules/MX0304.bin");
    const { id } = parameterOf(raw, 1, "Upper limit");
    await page.page.waitForSelector(view.module.field(id));
    const image = await imageOf(t, before, 2);
    await view.module.set(id, "99");
    await soonHas("reason", () => page.text(view.module.field(id)), "expected a number, -10 to 10 V");
    equal("text", await view.text(), before);
    equal("bytes", await view.module.bytes("raw"), image.bytes);
  },

  async "every comment is kept by edits"(t) {
    const { page, view } = await open(t);
    const comments = (text) => text.split("\n").filter((line) => line.includes("#")).map((line) => line.slice(line.indexOf("#")));
    const before = comments(await view.text());
    await view.choose("Pumps");
    await page.fillField("Name", "Drains", "Enter", ".entry-head");
    await view.textHas("name: Drains");
    await page.press("Escape");
    await page.click("button", "Pin all");
    await view.textHas("at: {in: 2}");
    equal("comments", comments(await view.text()), before);
  },

  async "line ends of Windows are kept"(t) {
    const { page, view, workplace } = await openWithLines(t, (text) => text.replace(/\n/g, "\r\n"));
    await view.choose("Levels");
    await page.fillField("Name", "Tanks", "Enter", ".entry-head");
    await view.textHas("name: Tanks");
    await page.press("Control+KeyS");
    await soonHas("file", async () => workplace.read(call[0]), "name: Tanks\r\n");
    equal("bare line feeds", workplace.read(call[0]).replace(/\r\n/g, "").includes("\n"), false);
  },

  async "selects the entry of the line, and shows the lines of the entry"(t) {
    const { page, view } = await open(t);
    await page.evaluate(() => {
      const field = document.querySelector(".yaml textarea");
      const at = field.value.indexOf("name: flow meter");
      field.focus();
      field.setSelectionRange(at, at);
    });
    await page.press("ArrowRight");
    await soon("selected entry", () => view.selected(), "flow meter");
    isTrue("its lines are marked", await page.has(".yaml-selected"));
  },

  async "the entry of the line comes into sight in a long row"(t) {
    const page = await t.open(await t.sharedServer("stations/row-of-64.yaml", "--folder", "."));
    const view = await StationView.on(page, 64);
    const names = await view.names();
    const text = await view.text();
    const isInSight = (index) => page.evaluate((one) => {
      const row = document.querySelector(".entry-row").getBoundingClientRect();
      const card = document.querySelector(`[data-entry="${one}"] > button`).getBoundingClientRect();
      return card.left >= row.left - 1 && card.right <= row.right + 1;
    }, index);
    for (const [from, index] of [[text.length - 2, 63], [text.indexOf("\n  - ") + 6, 0]]) {
      await page.evaluate((at) => {
        const field = document.querySelector(".yaml textarea");
        field.focus();
        field.setSelectionRange(at, at);
      }, from);
      await page.press("ArrowRight");
      await soon("selected entry", () => view.selected(), names[index]);
      await soon("it is in sight", () => isInSight(index), true);
      equal("the other end is", await isInSight(63 - index), false);
    }
  },
};
