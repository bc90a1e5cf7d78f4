// Hostile names where a coupler, an address, a path or the width of the screen is involved.
"use strict";

const fs = require("fs");
const { equal, isTrue, soon, soonHas, untilMet } = require("../harness/expected.cjs");
const { texts, writeInto } = require("../harness/hostile.cjs");

const file = "hostile.yaml";
const station = "hostile-station.yaml";
const registers = "modbus: {inputs: {address: 0}, outputs: {address: 0x1000}, parameters: {address: 0x4000}}\n";

function prepare(t) {
  const workplace = t.workplace();
  writeInto(workplace);
  return workplace;
}

async function isHarmless(page) {
  equal("carried out", await page.evaluate(() => window.attacked ?? null), null);
  const made = () => [...document.querySelectorAll("#page :is(script, iframe, object, svg, b, [onerror], [onload], [onfocus])")].map((one) => one.outerHTML);
  equal("elements", await page.evaluate(made), []);
}

/** Which of the texts no element of `place` has as it is. */
function missing(page, place, all) {
  return page.evaluate((selector, wanted) => {
    const within = [...document.querySelectorAll(selector)];
    return wanted.filter((one) => !within.some((element) => element.textContent.includes(one)));
  }, place, all);
}

module.exports = {
  async "names are texts in the view of a coupler"(t) {
    const workplace = prepare(t);
    workplace.write(station, `${registers}${workplace.read(station)}`);
    const coupler = await t.coupler(workplace, station);
    const page = await t.open(await t.server(workplace, station, "--folder", ".", "--target", coupler.target), { route: "#/online" });
    await page.click("button", "Plan", ".online");
    await soon("names that are not shown", () => missing(page, ".difference", texts), []);
    await page.click("button", "Read live values");
    await soon("aliases that are not shown", () => missing(page, "table.live", texts.map((one, index) => `${index}${one}`)), []);
    await isHarmless(page);
  },

  async "an address of a view that no link has is harmless"(t) {
    t.allow(/status of 4\d\d/);
    const page = await t.open(await t.server(prepare(t), "--folder", "."));
    for (const reference of [texts[0], "%", "../../../etc/passwd", "/etc/passwd", "\u0000"]) {
      await page.go(`#/module/${encodeURIComponent(reference)}`);
      await soonHas("reason", () => page.text("main"), "The module could not be opened.");
      isTrue("no other file is quoted", !(await page.text()).includes("root:"));
      await isHarmless(page);
      await page.go("#/catalogue");
      await page.heading("Catalogue");
    }
  },

  async "a text names files of the folder alone, and no other file is quoted"(t) {
    const workplace = prepare(t);
    workplace.write("outside/secret.yaml", "secret: words of another file\n");
    workplace.write("inside/own.yaml", "station: Own\nmodules: []\n");
    fs.symlinkSync(workplace.path("outside/secret.yaml"), workplace.path("inside/link.yaml"));
    const page = await t.open(await t.server(workplace, "inside/own.yaml"));
    const area = await page.find("field", "Text of the station, YAML");
    for (const reference of ["/etc/passwd", "../outside/secret.yaml", "link.yaml"]) {
      await page.fill(area, `station: Own\nmodules:\n  - module: ${reference}\n`, "");
      await soonHas("finding", () => page.text(".problems .finding"), reference);
      const shown = await page.text();
      isTrue("no other file is quoted", !shown.includes("root:") && !shown.includes("words of another file"));
    }
  },

  async "marks that reverse text end with the name that has them"(t) {
    const page = await t.open(await t.server(prepare(t), station, "--folder", "."));
    await page.click("tab", "All channels");
    await untilMet("the name is shown", () => missing(page, "[role=tabpanel] td", ["\u202e"]), (found) => found.length === 0, "shown");
    const open = () => [...document.querySelectorAll("#page *")].filter((one) => {
      const { display, unicodeBidi } = getComputedStyle(one);
      const hasMark = [...one.childNodes].some((node) => node.nodeType === Node.TEXT_NODE && node.data.includes("\u202e"));
      return hasMark && display === "inline" && !["isolate", "plaintext", "isolate-override"].includes(unicodeBidi);
    }).map((one) => one.outerHTML.slice(0, 200));
    equal("elements that reverse what is after them", await page.evaluate(open), []);
  },

  async "long names do not widen the page"(t) {
    const workplace = prepare(t);
    const long = "W".repeat(255);
    for (const name of [file, station]) {
      workplace.write(name, workplace.read(name).replaceAll(JSON.stringify(texts[0]), JSON.stringify(name === file ? long.slice(55) : long)));
    }
    for (const [served, tab] of [[file, "Channels"], [station, "All channels"]]) {
      const page = await t.open(await t.server(workplace, served, "--folder", "."), { viewport: { width: 360, height: 740 } });
      await page.click("tab", tab);
      await untilMet("the name is shown", () => missing(page, "h1", ["W".repeat(200)]), (found) => found.length === 0, "shown");
      const wide = () => [...document.querySelectorAll("#page *")].filter((one) => {
        const isInside = (element) => element !== document.body && (getComputedStyle(element).overflowX !== "visible" || isInside(element.parentElement));
        return one.getBoundingClientRect().right > innerWidth && !isInside(one.parentElement);
      }).map((one) => `${one.tagName.toLowerCase()}.${one.className}`);
      equal(`elements of ${served} that end outside of the screen`, (await page.evaluate(wide)).slice(0, 20), []);
      equal(`width of the page of ${served}`, await page.evaluate(() => document.scrollingElement.scrollWidth), 360);
    }
  },
};
