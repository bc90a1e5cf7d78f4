// Texts and pictures of files that somebody else made: shown as they are, never as markup, and nothing of them runs.
"use strict";

const { equal, isTrue, soon, soonHas, untilMet } = require("../harness/expected.cjs");
const hostile = require("../harness/hostile.cjs");
const { OtherSite } = require("../harness/other-site.cjs");

const [label] = hostile.texts;
const file = "modules/hostile.yaml";
const station = "stations/hostile.yaml";
const oddFile = "modules/<img src=x onerror=window.ran=1>&#x27;%22.yaml";

/** A folder with a hostile module, a station of hostile names, and a site that nothing may ask. */
async function prepare(t) {
  const site = await OtherSite.start();
  t.ends.push(() => site.end());
  const workplace = t.workplace();
  workplace.write(file, hostile.moduleText(label, hostile.picture(site.origin)));
  workplace.write(oddFile, workplace.read(file));
  workplace.write(station, hostile.stationText("../modules/hostile.yaml"));
  return { site, workplace };
}

/** Expects that nothing of the files ran, was asked for, or became an element. */
async function isHarmless(page, site) {
  const found = await page.evaluate(() => ({
    ran: "ran" in window,
    elements: [...document.querySelectorAll("#page :is(script, iframe, object, embed, foreignObject, svg, style, [onerror], [onload], [onfocus])")].map((one) => one.outerHTML),
    images: [...document.images].map((one) => one.getAttribute("src")).filter((one) => !/^(data|blob):/.test(one)),
    links: [...document.querySelectorAll("#page a")].map((one) => one.getAttribute("href")).filter((one) => !one.startsWith("#/")),
  }));
  equal("what became of the texts", found, { ran: false, elements: [], images: [], links: [] });
  equal("requests elsewhere", site.requests, []);
}

/** Which of the texts no element of `place` has as it is. */
function missing(page, place, texts) {
  return page.evaluate((selector, all) => {
    const within = [...document.querySelectorAll(selector)];
    return all.filter((one) => !within.some((element) => element.textContent.includes(one)));
  }, place, texts);
}

async function eachTab(page, visit) {
  for (const tab of await page.texts("[role=tab]")) {
    await page.click("tab", tab);
    await soon(`open tab`, () => page.text("[role=tab][aria-selected=true]"), tab);
    await visit(tab);
  }
}

module.exports = {
  async "names of a module are texts in each part of it"(t) {
    const { site, workplace } = await prepare(t);
    const page = await t.open(await t.server(workplace, file, "--folder", "."));
    await page.heading(label);
    await page.click("button", "Open all groups");
    await soon("names that are not shown", () => missing(page, ".field, [data-parameter]", hostile.ofModules), []);
    await isHarmless(page, site);
    await eachTab(page, async () => isHarmless(page, site));
    await page.click("tab", "Channels");
    await soon("names that are not shown", () => missing(page, "[role=tabpanel] td, [role=tabpanel] th", hostile.ofModules), []);
  },

  async "an option of a hostile name is chosen as any other"(t) {
    const { site, workplace } = await prepare(t);
    const page = await t.open(await t.server(workplace, file, "--folder", "."));
    await page.heading(label);
    const { parameters } = await workplace.json("config", file);
    const { id } = parameters.find((one) => one.channel === 0);
    const control = await page.page.waitForSelector(`[data-parameter="${id}"] select`);
    await control.select(hostile.ofModules[4]);
    const { bytes } = await workplace.json("config", file, "--set", `#${id}=${hostile.ofModules[4]}`);
    isTrue("the first byte is that of the option", bytes.startsWith("04 01 "));
    await soonHas("bytes", () => page.texts("[aria-label=\"Parameter image\"] [data-byte] > span:first-child").then((all) => all.join(" ")), bytes);
    await isHarmless(page, site);
  },

  async "a picture with scripts and addresses is drawn as an image alone"(t) {
    const { site, workplace } = await prepare(t);
    const page = await t.open(await t.server(workplace, file, "--folder", "."));
    const drawn = () => page.evaluate(() => [...document.images].map((one) => [one.src.slice(0, 11), one.complete && one.naturalWidth > 0]));
    await soon("pictures", drawn, [["data:image/", true]]);
    await isHarmless(page, site);
    await page.click("tab", "Process image");
    await page.click("button", "As mxtool draws it");
    await soon("pictures", drawn, [["data:image/", true], ["data:image/", true]]);
    await isHarmless(page, site);
  },

  async "a data sheet with such a picture runs nothing and asks for nothing"(t) {
    t.allow(/Content Security Policy|CSP/);
    const { site, workplace } = await prepare(t);
    await workplace.output("datasheet", file, "-o", "sheet.html");
    site.page = workplace.read("sheet.html");
    const page = await t.open({ address: `${site.origin}/` });
    await soonHas("sheet", () => page.text(), label);
    equal("did a script run", await page.evaluate(() => "ran" in window), false);
    equal("elements", await page.evaluate(() => [...document.querySelectorAll("script, iframe, object, foreignObject, [onerror], [onload]")].map((one) => one.outerHTML)), []);
    equal("requests", site.requests.filter((one) => one !== "/"), []);
  },

  async "names of a station are texts in each part of it"(t) {
    const { site, workplace } = await prepare(t);
    const page = await t.open(await t.server(workplace, station, "--folder", "."));
    await page.heading(label);
    const names = [...hostile.texts, ...hostile.texts.map((one, index) => `r${index}${one}`)];
    await soon("names that are not in the row", () => missing(page, ".entry-card", names), []);
    await isHarmless(page, site);
    await eachTab(page, async () => isHarmless(page, site));
    await page.click("tab", "All channels");
    await soon("aliases that are not shown", () => missing(page, "[role=tabpanel] td", hostile.texts.map((one, index) => `a${index}${one}`)), []);
    await isHarmless(page, site);
    for (const button of ["Add module …", "Export …"]) {
      await page.click("button", button);
      await untilMet("dialog", () => page.dialog(), (found) => found !== "", "one");
      await isHarmless(page, site);
      await page.press("Escape");
    }
  },

  async "names are texts in the view of a coupler"(t) {
    const { site, workplace } = await prepare(t);
    const coupler = await t.coupler(workplace, station);
    const page = await t.open(await t.server(workplace, station, "--folder", ".", "--target", coupler.target), { route: "#/online" });
    await page.click("button", "Plan", ".online");
    await soon("names that are not shown", () => missing(page, ".difference", hostile.texts), []);
    await page.click("button", "Read live values");
    await soon("aliases that are not shown", () => missing(page, "table.live", hostile.texts.map((one, index) => `a${index}${one}`)), []);
    await isHarmless(page, site);
  },

  async "what is wrong with a hostile text is said with the text as it is"(t) {
    const { site, workplace } = await prepare(t);
    const page = await t.open(await t.server(workplace, station, "--folder", "."));
    const area = await page.find("field", "Text of the station, YAML");
    await page.fill(area, `station: x\n${JSON.stringify(label)}: 1\nmodules:\n  - module: ${JSON.stringify(hostile.texts[2])}\n`, "");
    await soon("texts that no finding has", () => missing(page, ".problems .finding", [label, hostile.texts[2]]), []);
    await isHarmless(page, site);
  },

  async "a file of a hostile name is listed and opened"(t) {
    const { site, workplace } = await prepare(t);
    const page = await t.open(await t.server(workplace, "--folder", "."), { route: "#/catalogue" });
    await page.click("link", oddFile);
    await page.heading(label);
    await isHarmless(page, site);
  },

  async "an address of a view that no link has is harmless"(t) {
    t.allow(/status of 4\d\d/);
    const { site, workplace } = await prepare(t);
    const page = await t.open(await t.server(workplace, "--folder", "."));
    for (const reference of ["<img src=x onerror=window.ran=1>", "%", "../../../etc/passwd", "/etc/passwd", "%00"]) {
      await page.go(`#/module/${encodeURIComponent(reference)}`);
      await untilMet("reason", () => page.text("main"), (found) => found.includes("could not be opened"), "The module could not be opened.");
      isTrue("no other file is quoted", !(await page.text()).includes("root:"));
      await isHarmless(page, site);
      await page.go("#/catalogue");
      await page.heading("Catalogue");
    }
  },

  async "a text names files of the folder alone, and no other file is quoted"(t) {
    const { workplace } = await prepare(t);
    workplace.write("outside/secret.yaml", "secret: words of another file\n");
    require("fs").symlinkSync(workplace.path("outside/secret.yaml"), workplace.path("stations/link.yaml"));
    workplace.write("stations/own.yaml", "station: Own\nmodules: []\n");
    const page = await t.open(await t.server(workplace, "stations/own.yaml"));
    const area = await page.find("field", "Text of the station, YAML");
    for (const reference of ["/etc/passwd", "../outside/secret.yaml", "link.yaml"]) {
      await page.fill(area, `station: Own\nmodules:\n  - module: ${reference}\n`, "");
      await soonHas("finding", () => page.text(".problems .finding"), reference);
      const shown = await page.text();
      isTrue("no other file is quoted", !shown.includes("root:") && !shown.includes("words of another file"));
    }
  },

  async "marks that reverse text end with the name that has them"(t) {
    const { workplace } = await prepare(t);
    const page = await t.open(await t.server(workplace, station, "--folder", "."));
    await page.heading(label);
    await page.click("tab", "All channels");
    const open = () => page.evaluate(() => [...document.querySelectorAll("#page *")].filter((one) => {
      const { display, unicodeBidi } = getComputedStyle(one);
      const isOwn = [...one.childNodes].some((node) => node.nodeType === Node.TEXT_NODE && node.data.includes("\u202e"));
      return isOwn && display === "inline" && !["isolate", "plaintext", "isolate-override"].includes(unicodeBidi);
    }).map((one) => one.outerHTML.slice(0, 200)));
    await untilMet("the name is shown", () => missing(page, "[role=tabpanel] td", ["\u202e"]), (found) => found.length === 0, "shown");
    equal("elements that reverse what is after them", await open(), []);
  },

  async "long names do not widen the page"(t) {
    const { workplace } = await prepare(t);
    for (const [served, tab] of [[file, "Channels"], [station, "All channels"]]) {
      const page = await t.open(await t.server(workplace, served, "--folder", "."), { viewport: { width: 360, height: 740 } });
      await page.heading(label);
      await page.click("tab", tab);
      const wide = () => page.evaluate(() => {
        const root = document.scrollingElement;
        const all = [...document.querySelectorAll("#page *")].filter((one) => one.getBoundingClientRect().right > 360 && one.closest(".scrolls, .row") === null);
        return root.scrollWidth <= 360 ? [] : all.map((one) => `${one.tagName} ${one.className}`).slice(0, 20);
      });
      equal(`elements that widen the page of ${served}`, await wide(), []);
    }
  },
};
