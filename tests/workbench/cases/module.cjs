// A module: its fields and its bytes, each with the other. What is expected comes from mxtool config.
"use strict";

const { equal, isTrue, soon, soonHas } = require("../harness/expected.cjs");
const { ModuleView, configured, parameterOf } = require("../harness/module-view.cjs");

const call = ["modules/MX0304.bin"];
const [file] = call;

async function open(t, ...served) {
  const names = served.length > 0 ? served : call;
  const page = await t.open(await t.sharedServer(...names));
  const before = await configured(t.shared, names[0], {});
  await page.heading(before.raw.label);
  const view = new ModuleView(page);
  await soon("bytes of the defaults", () => view.bytes("raw"), before.raw.bytes);
  return { page, view, before };
}

function bytesOf({ byte, size }) {
  return Array.from({ length: size }, (_, index) => byte + index);
}

async function pointAt(page, selector) {
  const element = await page.page.waitForSelector(selector);
  await element.scrollIntoView();
  await element.hover();
}

module.exports = {
  async "shows the bytes of the defaults"(t) {
    const { view, before } = await open(t);
    await view.showsBytesOf(before);
    equal("nothing is changed", await view.fields("changed"), []);
  },

  async "a number changes the bytes that mxtool config changes"(t) {
    const { view, before } = await open(t);
    const { id } = parameterOf(before.raw, 0, "Upper limit");
    await view.set(id, "9.9");
    const expected = await configured(t.shared, file, { "AI 1/Upper limit": "9.9 V" });
    isTrue("bytes 2 and 3 are those of 9.9 V", expected.raw.bytes.startsWith("32 00 26 ac "));
    await view.showsBytesOf(expected);
    await view.marksChangesOf(expected);
  },

  async "an option changes its byte"(t) {
    const { view, before } = await open(t);
    const { id } = parameterOf(before.raw, 0, "Signal range");
    await view.set(id, "4-20 mA");
    const expected = await configured(t.shared, file, { "AI 1/Signal range": "4-20 mA" });
    await view.showsBytesOf(expected);
    equal("option", await view.shown(id), "4-20 mA");
  },

  async "a switch changes its bit alone"(t) {
    const { view, before } = await open(t);
    const parameter = parameterOf(before.raw, 0, "Wire break check");
    isTrue("it is one bit", parameter.bit_length === 1);
    await view.set(parameter.id, "0");
    const expected = await configured(t.shared, file, { "AI 1/Wire break check": "0" });
    await view.showsBytesOf(expected);
    await soon("switch", () => view.shown(parameter.id), false);
  },

  async "the focus of a field lights its bytes, and no others"(t) {
    const { page, view, before } = await open(t);
    const parameter = parameterOf(before.raw, 1, "Lower limit");
    const inModbus = parameterOf(before.modbus, 1, "Lower limit");
    await (await page.page.waitForSelector(`${view.field(parameter.id)} input`)).focus();
    await soon("lit bytes", () => view.marked("raw", "lit"), bytesOf(parameter));
    await soon("lit bytes of registers", () => view.marked("modbus", "lit"), bytesOf(inModbus));
  },

  async "the pointer on a field lights its bytes, and goes back to the focus"(t) {
    const { page, view, before } = await open(t);
    const focused = parameterOf(before.raw, 0, "Upper limit");
    const touched = parameterOf(before.raw, 0, "Lower limit");
    await (await page.page.waitForSelector(`${view.field(focused.id)} input`)).focus();
    await pointAt(page, `${view.field(touched.id)} label`);
    await soon("lit bytes", () => view.marked("raw", "lit"), bytesOf(touched));
    await page.page.mouse.move(2, 2);
    await soon("lit bytes", () => view.marked("raw", "lit"), bytesOf(focused));
  },

  async "a byte lights its field, and Enter goes there"(t) {
    const { page, view, before } = await open(t);
    const parameter = parameterOf(before.raw, 2, "Upper limit");
    await pointAt(page, `[aria-label="Parameter image"] [data-byte="${parameter.byte + 1}"]`);
    await soon("lit fields", () => view.fields("lit"), [parameter.id]);
    await (await page.page.$(`[aria-label="Parameter image"] [data-byte="${parameter.byte}"]`)).focus();
    await soon("lit fields", () => view.fields("lit"), [parameter.id]);
    await page.press("Enter");
    await soon("focus", () => page.focused(), "Upper limit");
    equal("field of the focus", await page.evaluate(() => document.activeElement.closest("[data-parameter]").dataset.parameter), parameter.id);
  },

  async "a byte of several bit fields lights all of them"(t) {
    const { page, view, before } = await open(t);
    const check = parameterOf(before.raw, 0, "Wire break check");
    const depth = parameterOf(before.raw, 0, "Filter depth");
    equal("they share a byte", depth.byte, check.byte);
    await pointAt(page, `[aria-label="Parameter image"] [data-byte="${check.byte}"]`);
    await soon("lit fields", () => view.fields("lit"), [check.id, depth.id]);
  },

  async "a register says which value it holds"(t) {
    const { page, view, before } = await open(t);
    const parameter = parameterOf(before.modbus, 0, "Lower limit");
    await pointAt(page, `[aria-label="Modbus registers"] [data-byte="${parameter.byte}"]`);
    await soonHas("what is told", () => page.text(".bytes-pane"), `Lower limit: ${parameter.shown}`);
    equal("lit fields", await view.fields("lit"), [parameter.id]);
  },

  async "a changed value is marked, with its default"(t) {
    const { page, view, before } = await open(t);
    const parameter = parameterOf(before.raw, null, "Mains suppression");
    await view.set(parameter.id, "60");
    await soon("changed", () => view.fields("changed"), [parameter.id]);
    await soonHas("default", () => page.text(view.field(parameter.id)), `default ${parameter.default_shown}`);
    await soon("marked bytes", () => view.marked("raw", "changed"), [0]);
    await soonHas("count", () => page.text(".module-head"), "1 value changed");
  },

  async "reset of one value leaves the others"(t) {
    const { page, view, before } = await open(t);
    const first = parameterOf(before.raw, 0, "Upper limit");
    const second = parameterOf(before.raw, 1, "Upper limit");
    await view.set(first.id, "1");
    await view.set(second.id, "2");
    await soon("changed", () => view.fields("changed"), [first.id, second.id]);
    await page.click("button", `Reset Upper limit to ${first.default_shown}`, view.field(first.id));
    const expected = await configured(t.shared, file, { "AI 2/Upper limit": "2" });
    await view.showsBytesOf(expected);
    await view.marksChangesOf(expected);
  },

  async "undo, redo and reset of all"(t) {
    const { page, view, before } = await open(t);
    const { id } = parameterOf(before.raw, 0, "Upper limit");
    await view.set(id, "1");
    await view.set(id, "2");
    const one = await configured(t.shared, file, { "AI 1/Upper limit": "1" });
    const two = await configured(t.shared, file, { "AI 1/Upper limit": "2" });
    await view.showsBytesOf(two);
    await page.press("Control+KeyZ");
    await view.showsBytesOf(one);
    await page.click("button", "Undo");
    await view.showsBytesOf(before);
    await page.click("button", "Redo");
    await page.press("Control+Shift+KeyZ");
    await view.showsBytesOf(two);
    await page.click("button", "Reset all");
    await view.showsBytesOf(before);
    await page.click("button", "Undo");
    await view.showsBytesOf(two);
  },

  async "a refused value says what is accepted, and keeps the last bytes"(t) {
    const { page, view, before } = await open(t);
    const { id } = parameterOf(before.raw, 0, "Upper limit");
    await view.set(id, "9.9");
    const good = await configured(t.shared, file, { "AI 1/Upper limit": "9.9" });
    await view.showsBytesOf(good);
    await view.set(id, "99");
    const { err } = await t.shared.run("config", file, "--set", "AI 1/Upper limit=99");
    const [reason] = /value "99" is not accepted: expected[^\n]*/.exec(err);
    await soonHas("reason", () => page.text(view.field(id)), reason);
    await view.showsBytesOf(good);
    equal("what was typed", await view.shown(id), "99");
    await soonHas("note at the bytes", () => page.text(".bytes-pane"), "These are the bytes of the last accepted values");
    await page.click("button", "Undo");
    await soon("what is shown", () => view.shown(id), "9.9");
  },

  async "the process image is a table with links to the channels, and a picture"(t) {
    const { page, before } = await open(t);
    await page.click("tab", "Process image");
    const { channels } = await t.shared.json("channels", file);
    const expected = channels.map((one) => `${one.name} ${one.symbol}`);
    await soon("channels in the image", () => page.texts("table.image button.channel"), expected);
    await page.click("button", "As mxtool draws it");
    const drawn = await page.page.waitForSelector(`img[alt="Process image of ${before.raw.label}"]`);
    const source = await drawn.evaluate((one) => decodeURIComponent(one.src.slice(one.src.indexOf(",") + 1)));
    const picture = await t.shared.output("channels", file, "--picture", "-");
    equal("picture", source, picture.toString());
    await page.click("button", "As a table with links");
    await page.click("button", expected[1]);
    await soonHas("row of the channel", () => page.text("tr.chosen"), channels[1].name);
  },

  async "the properties are those of the device"(t) {
    const { page } = await open(t);
    await page.click("tab", "Properties");
    const { properties } = await t.shared.json("show", file);
    const rows = properties.map(({ name, value }) => `${name} ${value === "" ? "–" : value}`.replace(/\s+/g, " "));
    await soon("rows", () => page.texts("[role=tabpanel] tbody tr"), rows);
  },

  async "the bytes of an mx file are explained"(t) {
    const { page } = await open(t);
    await page.click("tab", "Bytes of the file");
    const { parts } = await t.shared.json("explain", file);
    const part = parts.find((one) => one.offset >= 4 && one.meaning !== "");
    await pointAt(page, `.file [data-byte="${part.offset}"]`);
    await soonHas("field", () => page.text(".file .byte-info"), part.field);
    await soonHas("meaning", () => page.text(".file .byte-info"), part.meaning);
    const shown = await page.texts(".file [data-byte]");
    const bytes = require("fs").readFileSync(t.shared.path(file));
    equal("bytes", shown.join(" "), [...bytes.subarray(0, 512)].map((one) => one.toString(16).padStart(2, "0")).join(" "));
  },

  async "only changed values, and fields by words"(t) {
    const { page, view, before } = await open(t);
    const { id } = parameterOf(before.raw, 0, "Upper limit");
    await view.set(id, "1");
    await page.click("field", "Only changed values");
    await soon("fields", () => page.evaluate(() => [...document.querySelectorAll("[data-parameter]")].map((one) => one.dataset.parameter)), [id]);
    await page.click("field", "Only changed values");
    await page.fillField("Find a parameter or channel", "AI 4 lower");
    const wanted = parameterOf(before.raw, 3, "Lower limit").id;
    await soon("fields", () => page.evaluate(() => [...document.querySelectorAll("[data-parameter]")].map((one) => one.dataset.parameter)), [wanted]);
  },

  async "a module without parameters says so"(t) {
    const page = await t.open(await t.sharedServer("modules/MX0001.bin"));
    await soonHas("message", () => page.text("[role=tabpanel]"), "This module has no parameters.");
  },
};
