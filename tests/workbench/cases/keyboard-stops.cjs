// Where the focus comes to without a mouse: each stop of Tab, and what moves it elsewhere.
"use strict";

const { equal, isTrue, soon, soonHas, untilMet } = require("../harness/expected.cjs");
const { notReached, tabThrough } = require("../harness/focus.cjs");
const { StationView } = require("../harness/station-view.cjs");

const station = "stations/pump-house.yaml";
const file = "modules/MX0304.bin";
const stationCall = [station, "--folder", ".", "--db", "sqlite:catalogue.sqlite"];

async function openStation(t) {
  const page = await t.open(await t.sharedServer(...stationCall));
  const view = await StationView.on(page);
  await page.page.waitForSelector("[data-parameter]");
  return { page, view };
}

async function openModule(t, name = file) {
  const page = await t.open(await t.sharedServer(name));
  await page.page.waitForSelector("[data-parameter]");
  return page;
}

/** Expects that Tab leads to all of a view, and that each stop is seen and has a name. */
async function isReachable(page) {
  const stops = await tabThrough(page);
  isTrue("there are stops", stops.length > 5);
  const names = (all) => all.map(({ tag, name, coveredBy }) => `${tag} ${name} ${coveredBy}`);
  equal("stops without a name", names(stops.filter((one) => one.name === "")), []);
  equal("stops that are not marked", names(stops.filter((one) => !one.isMarked)), []);
  equal("stops that are not in sight", names(stops.filter((one) => !one.isInSight || one.coveredBy !== "")), []);
  equal("what Tab does not lead to", await page.evaluate(notReached), []);
}

function focusedText(page) {
  return page.evaluate(() => document.activeElement.innerText.trim());
}

module.exports = {
  async "Tab leads through the catalogue, in sight and with names"(t) {
    const page = await t.open(await t.sharedServer(...stationCall), { route: "#/catalogue" });
    await page.page.waitForSelector(".catalogue tbody tr");
    await isReachable(page);
  },

  async "Tab leads through a module, in sight and with names"(t) {
    const page = await openModule(t, "modules/MX0302.bin");
    await isReachable(page);
  },

  async "Tab leads through a station, in sight and with names"(t) {
    const { page, view } = await openStation(t);
    await view.choose("Pumps");
    await untilMet("fields of the module", () => page.texts("[data-parameter] label"), (found) => found.length > 0 && found.length < 10, "some");
    await isReachable(page);
  },

  async "a link to a view moves the focus to its heading"(t) {
    const { page } = await openStation(t);
    await page.reach("Catalogue");
    await page.press("Enter");
    await page.heading("Catalogue");
    await soon("focus", () => focusedText(page), "Catalogue");
    await soon("element", () => page.evaluate(() => document.activeElement.tagName), "H1");
  },

  async "the keys are listed after ?, not while a text is typed"(t) {
    const page = await openModule(t);
    await page.press("Control+KeyK");
    await soon("focus", () => page.focused(), "Find a parameter or channel");
    await page.keyboard.type("?");
    equal("dialog", await page.dialog(), "");
    await page.press("Backspace");
    await page.evaluate(() => document.activeElement.blur());
    await page.keyboard.type("?");
    await soon("dialog", () => page.dialog(), "Keys");
    await soonHas("keys", () => page.text("dialog"), "Save the station");
    await page.press("Escape");
    await soon("dialog", () => page.dialog(), "");
  },

  async "the modules found are walked by arrows and opened by Enter"(t) {
    const page = await t.open(await t.sharedServer(...stationCall), { route: "#/catalogue" });
    const labels = await untilMet("modules", () => page.texts(".catalogue table.cards tbody tr a"), (found) => found.length > 3, "some");
    await page.press("Control+KeyK");
    await soon("focus", () => page.focused(), "Search words");
    await page.reach(labels[0]);
    await page.press("ArrowDown");
    await page.press("ArrowDown");
    equal("focus", await focusedText(page), labels[2]);
    await page.press("ArrowUp");
    await page.press("Enter");
    await page.heading(labels[1]);
  },

  async "the focus stays in the row when a module is removed"(t) {
    const { page, view } = await openStation(t);
    await view.choose("Levels");
    await page.press("Delete");
    await soon("entries", () => view.names(), ["MX0116", "flow meter", "Pumps"]);
    equal("is the focus on an entry", await page.evaluate(() => document.activeElement.matches(".entry-card")), true);
  },
};
