// What a person needs to see without looking for it, on screens of any width.
"use strict";

const { equal, isTrue, soon, soonHas, untilMet } = require("../harness/expected.cjs");
const { ModuleView } = require("../harness/module-view.cjs");
const { StationView } = require("../harness/station-view.cjs");

const station = "stations/pump-house.yaml";
const narrow = { width: 360, height: 740 };
const laptop = { width: 1280, height: 800 };

const routes = { "#/station": "Pump house", "#/catalogue": "Catalogue", "#/online": "Online" };

function widthBeyond(page) {
  return page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
}

async function broken(t) {
  const workplace = t.workplace();
  const text = workplace.read(station);
  workplace.write(station, text.replace("MX0116.yaml", "MX0117.yaml").replace("9.9 V", "11 V"));
  const page = await t.open(await t.server(workplace, station, "--folder", "."), { viewport: laptop });
  await soonHas("findings", () => page.text(".problems"), "MX0117");
  return { page, workplace };
}

/** The height of each line number above the top of the text, by its number. */
function lineNumbers(page) {
  return page.evaluate(() => {
    const gutter = document.querySelector(".yaml-gutter");
    const top = document.querySelector(".yaml textarea").getBoundingClientRect().top;
    const places = [];
    const walk = document.createTreeWalker(gutter, NodeFilter.SHOW_TEXT);
    while (walk.nextNode()) {
      for (const { 0: number, index } of walk.currentNode.data.matchAll(/\d+/g)) {
        const range = document.createRange();
        range.setStart(walk.currentNode, index);
        range.setEnd(walk.currentNode, index + number.length);
        places.push([Number(number), range.getBoundingClientRect().top - top]);
      }
    }
    return places;
  });
}

/** Whether the first of these elements is within the screen and within what scrolls it. */
function isInSight(page, selector) {
  return page.evaluate((one) => {
    const found = document.querySelector(one);
    if (found === null) return false;
    const { left, top, width, height } = found.getBoundingClientRect();
    const there = document.elementFromPoint(left + width / 2, top + height / 2);
    return there !== null && found.contains(there);
  }, selector);
}

module.exports = {
  async "no view is wider than a narrow screen"(t) {
    const workplace = t.shared;
    const coupler = await t.coupler(workplace, station);
    const server = await t.server(workplace, station, "--folder", ".", "--db", "sqlite:catalogue.sqlite", "--target", coupler.target);
    const page = await t.open(server, { viewport: narrow });
    for (const [route, heading] of Object.entries(routes)) {
      await page.go(route);
      await page.heading(heading);
      if (route === "#/catalogue") {
        await soonHas("modules", () => page.text(".count"), "38 modules");
      }
      equal(`pixels beyond the screen at ${route}`, await widthBeyond(page), 0);
    }
  },

  async "each line of a text with errors has its number"(t) {
    const { page } = await broken(t);
    const height = await page.evaluate(() => parseFloat(getComputedStyle(document.querySelector(".yaml textarea")).lineHeight));
    const found = await lineNumbers(page);
    isTrue("there are marked lines", await page.has(".yaml-gutter .marked.error"));
    equal("numbers that are not at their lines",
      found.filter(([number, top]) => Math.floor(top / height) !== number - 1), []);
  },

  async "a station with errors says so in sight, and leads to the first"(t) {
    const { page, workplace } = await broken(t);
    isTrue("it is in sight", await isInSight(page, ".first-error"));
    equal("the selected module", await page.text(".stale-note"), "The station has errors: see the findings.");
    await page.click("button", "2 errors: go to the first");
    const chosen = () => page.evaluate(() => {
      const { value, selectionStart } = document.querySelector(".yaml textarea");
      return value.slice(0, selectionStart).split("\n").length;
    });
    await soon("chosen line", chosen, workplace.read(station).split("\n").findIndex((line) => line.includes("MX0117")) + 1);
  },

  async "the marked lines of an entry end before the comment on the next"(t) {
    const server = await t.sharedServer(station, "--folder", ".");
    const page = await t.open(server, { viewport: laptop });
    const view = await StationView.on(page);
    await view.choose("Levels");
    const lines = t.shared.read(station).split("\n");
    const first = lines.findIndex((line) => line.includes("MX0304.yaml"));
    const last = lines.findIndex((line) => line.includes("alias: LT_102"));
    const marked = () => page.evaluate(() => {
      const { style } = document.querySelector(".yaml-selected");
      return [style.getPropertyValue("--first"), style.getPropertyValue("--count")].map(Number);
    });
    await soon("first line and number of lines", marked, [first, last - first + 1]);
  },

  async "the lit bytes of a field are in sight, however large the image is"(t) {
    const page = await t.open(await t.sharedServer("modules/MX0960.bin"), { viewport: { width: 800, height: 700 } });
    const view = new ModuleView(page);
    const { parameters } = await t.shared.json("config", "modules/MX0960.bin");
    const last = parameters.filter((one) => one.name.startsWith("Report faults")).at(-1);
    await (await page.page.waitForSelector(`${view.field(last.id)} input`)).focus();
    await untilMet("its byte is in sight", () => isInSight(page, ".cell.lit"), (found) => found === true, true);
  },

  async "fields and bytes of the selected module are in sight on a laptop"(t) {
    const page = await t.open(await t.sharedServer(station, "--folder", "."), { viewport: laptop });
    const view = await StationView.on(page);
    await view.choose("Levels");
    await page.page.waitForSelector(view.module.field("21"));
    await page.page.waitForSelector(".entry-card img");
    const whole = (selector) => page.evaluate((one) => [...document.querySelectorAll(one)]
      .filter((each) => each.getBoundingClientRect().bottom <= innerHeight).length, selector);
    await untilMet("whole fields in sight", () => whole("[data-parameter]"), (count) => count >= 3, "at least 3");
    equal("parameter images in sight", await whole(".byte-table .byte"), 1);
  },

  async "a small image has no columns without bytes"(t) {
    const page = await t.open(await t.sharedServer("modules/MX0116.bin"), { viewport: laptop });
    await page.page.waitForSelector(".byte-table .byte");
    equal("columns", await page.texts(".byte-table .byte thead th"), ["Byte", "+0", "+1", "+2"]);
  },
};
