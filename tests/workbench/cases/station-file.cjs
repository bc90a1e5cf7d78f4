// Saving to the file, and another program that writes it too.
"use strict";

const fs = require("fs");
const path = require("path");
const { equal, isTrue, soon, soonHas } = require("../harness/expected.cjs");
const { StationView } = require("../harness/station-view.cjs");

const file = "stations/pump-house.yaml";
const call = [file, "--folder", "."];

async function open(t, workplace, options) {
  const server = await t.server(workplace, ...call);
  const page = await t.open(server, options);
  return { server, page, view: await StationView.on(page) };
}

async function rename(page, view, from, to) {
  await view.choose(from);
  await page.fillField("Name", to, "Enter", ".entry-head");
  await view.textHas(`name: ${to}`);
}

/** Opens a station, changes it on the page, and then its file beside the page. */
async function openChangedByBoth(t) {
  const workplace = t.workplace();
  const opened = await open(t, workplace);
  await rename(opened.page, opened.view, "Pumps", "Mine");
  const theirs = workplace.read(file).replace("name: Levels", "name: Theirs");
  workplace.write(file, theirs);
  await soon("dialog", () => opened.page.dialog(), "pump-house.yaml was changed by another program");
  return { ...opened, workplace, theirs };
}

module.exports = {
  async "writes the file as a whole, with its comments and mode, and leaves nothing beside it"(t) {
    const workplace = t.workplace();
    fs.chmodSync(workplace.path(file), 0o640);
    const { page, view } = await open(t, workplace);
    const before = fs.statSync(workplace.path(file));
    const names = fs.readdirSync(workplace.path("stations"));
    const wanted = workplace.read(file).replace("name: Levels", "name: Tanks");
    await rename(page, view, "Levels", "Tanks");
    await soon("state", () => view.saveState(), "Not saved");
    await page.click("button", "Save");
    await soon("state", () => view.saveState(), "Saved");
    equal("file", workplace.read(file), wanted);
    const after = fs.statSync(workplace.path(file));
    equal("mode", after.mode & 0o777, 0o640);
    isTrue("it is another file under the same name", after.ino !== before.ino);
    equal("files of the folder", fs.readdirSync(workplace.path("stations")), names);
  },

  async "Ctrl+S saves a value that is still typed"(t) {
    const workplace = t.workplace();
    const { page, view } = await open(t, workplace);
    await view.choose("Levels");
    await page.fillField("Name", "Typed", "", ".entry-head");
    await page.press("Control+KeyS");
    await soonHas("file", async () => workplace.read(file), "name: Typed");
    await soon("state", () => view.saveState(), "Saved");
  },

  async "says why it cannot save, and keeps the draft"(t) {
    t.allow(/status of 5\d\d|status of 4\d\d/);
    const workplace = t.workplace();
    const { page, view } = await open(t, workplace);
    await rename(page, view, "Levels", "Tanks");
    const before = workplace.read(file);
    fs.rmSync(workplace.path("stations"), { recursive: true });
    fs.writeFileSync(workplace.path("stations"), before);
    await page.press("Control+KeyS");
    await soonHas("message", () => page.text(), "Not saved");
    await view.textHas("name: Tanks");
  },

  async "says why the file cannot be opened, and opens it when it can"(t) {
    t.allow(/status of 422/);
    const workplace = t.workplace();
    const server = await t.server(workplace, ...call);
    const content = workplace.read(file);
    fs.rmSync(workplace.path(file));
    fs.mkdirSync(workplace.path(file));
    const page = await t.open(server);
    await soonHas("message", () => page.text(".problems"), "Cannot read the file: found a directory");
    fs.rmdirSync(workplace.path(file));
    workplace.write(file, content);
    const view = await StationView.on(page);
    await soon("text", () => view.text(), content);
    equal("message", (await page.text(".problems")).includes("Cannot read"), false);
  },

  async "a file changed by another program is loaded where the page has no changes"(t) {
    const workplace = t.workplace();
    const { page, view } = await open(t, workplace);
    const theirs = workplace.read(file).replace("name: Levels", "name: Theirs");
    workplace.write(file, theirs);
    await soonHas("message", () => page.text(".file-changed"), "Another program changed pump-house.yaml.");
    await page.click("button", "Load it");
    await soon("text", () => view.text(), theirs);
    await soon("state", () => view.saveState(), "Saved");
  },

  async "changes of both: the file is taken, and undo returns to the own text"(t) {
    const { page, view, workplace, theirs } = await openChangedByBoth(t);
    const mine = await view.text();
    equal("file", workplace.read(file), theirs);
    await page.click("button", "Take the file", "dialog");
    await soon("text", () => view.text(), theirs);
    await page.press("Control+KeyZ");
    await soon("text", () => view.text(), mine);
    equal("file", workplace.read(file), theirs);
  },

  async "changes of both: the own text replaces the file only when that is chosen"(t) {
    const { page, view, workplace, theirs } = await openChangedByBoth(t);
    const mine = await view.text();
    await soonHas("difference", () => page.text("dialog"), "name: Theirs");
    equal("file", workplace.read(file), theirs);
    await page.click("button", "Keep mine: replace the file", "dialog");
    await soon("state", () => view.saveState(), "Saved");
    equal("file", workplace.read(file), mine);
  },

  async "changes of both: the own text is downloaded, and neither is lost"(t) {
    const { page, view, workplace, theirs } = await openChangedByBoth(t);
    const downloads = await t.downloads(page);
    await page.click("button", "Download mine", "dialog");
    const { name, bytes } = await downloads.next();
    equal("name", name, "pump-house.yaml");
    equal("bytes", bytes.toString(), await view.text());
    await page.press("Escape");
    await soon("dialog", () => page.dialog(), "");
    await soon("state", () => view.saveState(), "Changed on disk");
    equal("file", workplace.read(file), theirs);
  },

  async "of two pages the second to save is refused, and shown the other's text"(t) {
    t.allow(/status of 409/);
    const workplace = t.workplace();
    const { server, page, view } = await open(t, workplace);
    const other = await t.open(server);
    const otherView = await StationView.on(other);
    await rename(page, view, "Levels", "First");
    await rename(other, otherView, "Pumps", "Second");
    equal("each page has a draft of its own", (await otherView.text()).includes("First"), false);
    await page.press("Control+KeyS");
    await soon("state", () => view.saveState(), "Saved");
    const first = workplace.read(file);
    await other.press("Control+KeyS");
    await soon("dialog", () => other.dialog(), "pump-house.yaml was changed by another program");
    await soonHas("the other's text", () => other.text("dialog"), "name: First");
    equal("file", workplace.read(file), first);
  },

  async "a reload keeps the draft"(t) {
    const workplace = t.workplace();
    const { page, view } = await open(t, workplace);
    await rename(page, view, "Levels", "Kept");
    const text = await view.text();
    await page.page.reload({ waitUntil: "domcontentloaded" });
    await soon("text", () => view.text(), text);
    await soon("state", () => view.saveState(), "Not saved");
  },

  async "without a station a draft is downloaded"(t) {
    const workplace = t.workplace();
    const page = await t.open(await t.server(workplace, "--folder", "."), { route: "#/station" });
    await page.click("button", "Add module …");
    await page.fillField("Search words", "MX0108.yaml", "", "dialog");
    await page.click("button", "8 DI 24 V DC 3 ms modules/MX0108.yaml", "dialog");
    const view = await StationView.on(page, 1);
    const downloads = await t.downloads(page);
    await page.click("button", "Download");
    const { name, bytes } = await downloads.next();
    equal("name", name, "station.yaml");
    equal("bytes", bytes.toString(), await view.text());
    workplace.write(path.basename(name), bytes);
    equal("it can be planned", (await workplace.json("station", "show", name)).totals.modules, 1);
  },
};
